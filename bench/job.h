// One benchmark call: the arrays, the layout and the thread count that the
// library and every peer work on.  Shared by the harness, the library
// workloads and the peers (which are built twice, with different flags).
#pragma once

#include <cstddef>

namespace kb {

enum class Workload { AddMama, MulMama, MulMava, MulMac, Det, LU, EigVal, EigVec, Count };

struct Job {
    int elem;     // element size in bytes: 4 (32f) or 8 (64f)
    int n;        // order of every matrix; vectors have n elements
    int count;    // objects
    int es;       // element stride in elements: 1 (contiguous) or 2
    int threads;  // threads the peers use (the library reads kelSetNumThreads)
    const void* a;  // matrices, row-major, back to back in the layout
    const void* b;  // second matrices (Add, Mul mama) or vectors (mava, LU)
    void* d;        // results: matrices, vectors, or one scalar per object (Det)
    void* f;        // LU factors (same layout as a)
    int* idx;       // LU pivot indices, n per object
    void* work;     // work buffer: n*(3n+5) elements (Det uses n*(n+1), EigenValues n*(n+5))
    void* e;        // eigenvalue imaginary parts (EigVec; EigVal keeps them in f)
    double c;       // the constant of Mul mac

    // Byte strides of the layout.
    int elemStride() const { return es * elem; }
    int rowStride() const { return n * es * elem; }
    int matStride() const { return n * n * es * elem; }
    int vecStride() const { return n * es * elem; }
};

// Bytes a workload reads and writes per object (its operands and results, no
// gaps of the strided layout, no scratch).
inline double bytes_per_object(Workload w, int n, int elem)
{
    const double nn = double(n) * n;
    switch (w) {
    case Workload::AddMama:
    case Workload::MulMama: return 3 * nn * elem;
    case Workload::MulMava: return (nn + 2 * n) * elem;
    case Workload::MulMac: return 2 * nn * elem;
    case Workload::Det: return (nn + 1) * elem;
    case Workload::LU: return (nn + 2 * n) * elem;
    case Workload::EigVal: return (nn + 2 * n) * elem;
    case Workload::EigVec: return (2 * nn + 2 * n) * elem;
    default: return 0;
    }
}

using PeerFn = void (*)(const Job&);

// The peers of one build flavour: a user's plain loops and Eigen fixed-size
// types over maps of the same arrays.  Null when a combination is not built.
struct PeerSet {
    PeerFn (*plain)(Workload, int elem, int n, int es);
    PeerFn (*eigen)(Workload, int elem, int n, int es);
};

const PeerSet& peers_target();  // same flags as the library
const PeerSet& peers_native();  // -march=native

}  // namespace kb
