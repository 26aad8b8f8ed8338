// One benchmark call: the arrays, the layout and the thread count that the
// library and every peer work on.  Shared by the harness, the library
// workloads and the peers (which are built twice, with different flags).
#pragma once

#include <cstddef>

namespace kb {

enum class Workload {
    AddMama, MulMama, MulMava, MulMac, Det, LU,
    // Vector workloads: x vectors in a, y vectors in b (vecStride apart).
    // Cross: 3-vectors vecStride apart (order 3 packs them).  Gaxpy: the one
    // matrix is the first of a, the z vectors follow it in a (at a +
    // matStride), x in b.
    Invert, DotVava, CrossVava, SaxpyVava, LCombVava, GaxpyMva, Chol, CopyMa, TransposeMa, L2Norm, FrobNorm, Trace, Affine, EigSymValues, EigSymVectors, QR, EigVal, EigVec,
    Count
};

struct Job {
    int elem;     // element size in bytes: 4 (32f) or 8 (64f)
    int n;        // order of every matrix; vectors have n elements
    int count;    // objects
    int es;       // element stride in elements: 1 (contiguous) or 2
    int threads;  // threads the peers use (the library reads kelSetNumThreads)
    const void* a;  // matrices, row-major, back to back in the layout
    const void* b;  // second matrices (Add, Mul mama) or vectors (mava, LU)
    void* d;        // results: matrices, vectors, or one scalar per object (Det)
    void* f;        // LU, Cholesky and QR factors (same layout as a)
    int* idx;       // LU pivot indices, n per object
    void* work;     // work buffer: n*(3n+5) elements (Det and Invert use n*(n+1), QR n, the symmetric
                    // eigen workloads n*n, EigenValues n*(n+5))
    double c;       // the constant of Mul mac, the scale of Saxpy and the first of LComb (the second is 0.5)
    void* e;        // eigenvalue imaginary parts (EigVec; EigVal keeps them in f)

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
    case Workload::Invert: return 2 * nn * elem;
    case Workload::DotVava: return (2.0 * n + 1) * elem;
    case Workload::CrossVava: return 9.0 * elem;
    case Workload::SaxpyVava:
    case Workload::LCombVava:
    case Workload::GaxpyMva: return 3.0 * n * elem;  // the shared matrix not counted
    case Workload::Chol: return (nn + 2 * n) * elem;
    case Workload::CopyMa:
    case Workload::TransposeMa: return 2 * nn * elem;
    case Workload::L2Norm: return (n + 1) * double(elem);
    case Workload::FrobNorm:
    case Workload::Trace: return (nn + 1) * elem;  // the whole matrix streams in for its diagonal
    case Workload::Affine: return 6.0 * elem;
    case Workload::EigSymValues: return (nn + n) * elem;
    case Workload::EigSymVectors: return (2 * nn + n) * elem;
    case Workload::QR: return (nn + 2 * n) * elem;
    case Workload::EigVal: return (nn + 2 * n) * elem;
    case Workload::EigVec: return (2 * nn + 2 * n) * elem;
    default: return 0;
    }
}

// The matrix of the Affine workload (32f, row-major, element stride es = 1
// or 2): a projective transform whose w = 0.1x + 0.2y + 0.1z + 3 stays in
// (1.4, 4.6) for points in [-4, 4)^3.  Points are 3 elements each, packed
// (element stride es) in a, results likewise in d.
inline const float* affine_matrix(int es)
{
    static const float m1[16] = {0.9f, -0.2f, 0.3f, 1.5f, 0.1f, 1.1f, -0.4f, -2.0f,
                                 0.2f, 0.3f, 0.8f, 0.5f, 0.1f, 0.2f, 0.1f, 3.0f};
    static float m2[32];
    static const bool spread = [] {
        for (int i = 0; i < 16; ++i) m2[2 * i] = m1[i];
        return true;
    }();
    (void)spread;
    return es == 1 ? m1 : m2;
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
