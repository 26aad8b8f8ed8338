// The peers: what a user would write instead of calling the library.
//
// Two kinds, each for every workload, element type, order 3..6 and element
// stride 1 or 2 (all compile-time, as a user with a fixed layout would have):
//   plain  the loops a user writes by hand;
//   eigen  Eigen fixed-size matrices over Eigen::Map of the same arrays.
// With more than one thread a peer splits its objects with a static OpenMP
// loop, as a user would.
//
// This file is compiled twice: with the library's own flags (peers_target)
// and with -march=native (peers_native, KB_PEERS_NATIVE, built into its own
// shared object so that the two copies of Eigen's out-of-line code never
// merge).
#include <Eigen/Dense>

#include <cmath>
#include <type_traits>

#include "job.h"

#if defined(KB_PEERS_NATIVE)
#define KB_PEERS_ENTRY peers_native
#define KB_PEERS_VISIBLE __attribute__((visibility("default")))
#else
#define KB_PEERS_ENTRY peers_target
#define KB_PEERS_VISIBLE
#endif

namespace kb {
namespace {

template <class F>
void each_object(const Job& j, F&& f)
{
    if (j.threads <= 1) {
        for (int k = 0; k < j.count; ++k) f(k);
        return;
    }
#pragma omp parallel for num_threads(j.threads) schedule(static)
    for (int k = 0; k < j.count; ++k) f(k);
}

// --- plain loops ------------------------------------------------------------

// Matrix k element (i, j) is at m[k*N*N*S + (i*N + j)*S]; vector k element i
// at v[k*N*S + i*S].
template <class T, int N, int S>
struct Plain {
    static constexpr int MS = N * N * S, VS = N * S;

    static void add_mama(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        const T* b = static_cast<const T*>(job.b);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            const T* y = b + std::ptrdiff_t(k) * MS;
            T* z = d + std::ptrdiff_t(k) * MS;
            for (int i = 0; i < N * N; ++i) z[i * S] = x[i * S] + y[i * S];
        });
    }

    static void mul_mama(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        const T* b = static_cast<const T*>(job.b);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            const T* y = b + std::ptrdiff_t(k) * MS;
            T* z = d + std::ptrdiff_t(k) * MS;
            for (int i = 0; i < N; ++i)
                for (int c = 0; c < N; ++c) {
                    T s = 0;
                    for (int p = 0; p < N; ++p) s += x[(i * N + p) * S] * y[(p * N + c) * S];
                    z[(i * N + c) * S] = s;
                }
        });
    }

    static void mul_mava(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        const T* b = static_cast<const T*>(job.b);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            const T* v = b + std::ptrdiff_t(k) * VS;
            T* z = d + std::ptrdiff_t(k) * VS;
            for (int i = 0; i < N; ++i) {
                T s = 0;
                for (int p = 0; p < N; ++p) s += x[(i * N + p) * S] * v[p * S];
                z[i * S] = s;
            }
        });
    }

    static void mul_mac(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        T* d = static_cast<T*>(job.d);
        const T c = T(job.c);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            T* z = d + std::ptrdiff_t(k) * MS;
            for (int i = 0; i < N * N; ++i) z[i * S] = x[i * S] * c;
        });
    }

    // Gaussian elimination with partial pivoting on a local copy.
    static T det_one(const T* x)
    {
        T m[N][N];
        for (int i = 0; i < N; ++i)
            for (int c = 0; c < N; ++c) m[i][c] = x[(i * N + c) * S];
        T det = 1;
        for (int k = 0; k < N; ++k) {
            int p = k;
            for (int i = k + 1; i < N; ++i)
                if (std::abs(m[i][k]) > std::abs(m[p][k])) p = i;
            if (m[p][k] == 0) return 0;
            if (p != k) {
                for (int c = 0; c < N; ++c) std::swap(m[p][c], m[k][c]);
                det = -det;
            }
            det *= m[k][k];
            for (int i = k + 1; i < N; ++i) {
                const T f = m[i][k] / m[k][k];
                for (int c = k + 1; c < N; ++c) m[i][c] -= f * m[k][c];
            }
        }
        return det;
    }

    static void det(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) { d[k] = det_one(a + std::ptrdiff_t(k) * MS); });
    }

    // Factor with partial pivoting (rows swapped in a local copy), then solve.
    static void lu(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        const T* b = static_cast<const T*>(job.b);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            const T* v = b + std::ptrdiff_t(k) * VS;
            T* z = d + std::ptrdiff_t(k) * VS;
            T m[N][N], r[N];
            for (int i = 0; i < N; ++i) {
                for (int c = 0; c < N; ++c) m[i][c] = x[(i * N + c) * S];
                r[i] = v[i * S];
            }
            for (int q = 0; q < N; ++q) {
                int p = q;
                for (int i = q + 1; i < N; ++i)
                    if (std::abs(m[i][q]) > std::abs(m[p][q])) p = i;
                if (p != q) {
                    for (int c = 0; c < N; ++c) std::swap(m[p][c], m[q][c]);
                    std::swap(r[p], r[q]);
                }
                for (int i = q + 1; i < N; ++i) {
                    const T f = m[i][q] / m[q][q];
                    for (int c = q + 1; c < N; ++c) m[i][c] -= f * m[q][c];
                    r[i] -= f * r[q];
                }
            }
            for (int i = N - 1; i >= 0; --i) {
                T s = r[i];
                for (int c = i + 1; c < N; ++c) s -= m[i][c] * r[c];
                r[i] = s / m[i][i];
            }
            for (int i = 0; i < N; ++i) z[i * S] = r[i];
        });
    }
};

// --- Eigen ------------------------------------------------------------------

template <class T, int N, int S>
struct Eig {
    static constexpr int MS = N * N * S, VS = N * S;
    using Mat = Eigen::Matrix<T, N, N, Eigen::RowMajor>;
    using Vec = Eigen::Matrix<T, N, 1>;
    // Unit strides get Eigen's plain maps (its fastest); stride 2 gets
    // compile-time strides.
    using MStride = std::conditional_t<S == 1, Eigen::Stride<0, 0>, Eigen::Stride<N * S, S>>;
    using VStride = std::conditional_t<S == 1, Eigen::InnerStride<1>, Eigen::InnerStride<S>>;
    using CMat = Eigen::Map<const Mat, Eigen::Unaligned, MStride>;
    using MMat = Eigen::Map<Mat, Eigen::Unaligned, MStride>;
    using CVec = Eigen::Map<const Vec, Eigen::Unaligned, VStride>;
    using MVec = Eigen::Map<Vec, Eigen::Unaligned, VStride>;

    static CMat cmat(const void* p, int k) { return CMat(static_cast<const T*>(p) + std::ptrdiff_t(k) * MS); }
    static MMat mmat(void* p, int k) { return MMat(static_cast<T*>(p) + std::ptrdiff_t(k) * MS); }
    static CVec cvec(const void* p, int k) { return CVec(static_cast<const T*>(p) + std::ptrdiff_t(k) * VS); }
    static MVec mvec(void* p, int k) { return MVec(static_cast<T*>(p) + std::ptrdiff_t(k) * VS); }

    static void add_mama(const Job& j)
    {
        each_object(j, [&](int k) { mmat(j.d, k) = cmat(j.a, k) + cmat(j.b, k); });
    }
    static void mul_mama(const Job& j)
    {
        each_object(j, [&](int k) { mmat(j.d, k).noalias() = cmat(j.a, k) * cmat(j.b, k); });
    }
    static void mul_mava(const Job& j)
    {
        each_object(j, [&](int k) { mvec(j.d, k).noalias() = cmat(j.a, k) * cvec(j.b, k); });
    }
    static void mul_mac(const Job& j)
    {
        const T c = T(j.c);
        each_object(j, [&](int k) { mmat(j.d, k) = cmat(j.a, k) * c; });
    }
    static void det(const Job& j)
    {
        T* d = static_cast<T*>(j.d);
        each_object(j, [&](int k) { d[k] = cmat(j.a, k).determinant(); });
    }
    static void lu(const Job& j)
    {
        each_object(j, [&](int k) { mvec(j.d, k) = cmat(j.a, k).partialPivLu().solve(cvec(j.b, k)); });
    }
    // General eigenvalues (real parts to f, imaginary to e, n per object),
    // and with the real pseudo-eigenvectors (real and imaginary parts in
    // adjacent columns, as the library stores them) into d.
    using Solver = Eigen::EigenSolver<Eigen::Matrix<T, N, N>>;
    static void eig_store(const Job& j, int k, const Solver& es)
    {
        T* re = static_cast<T*>(j.f) + std::ptrdiff_t(k) * N;
        T* im = static_cast<T*>(j.e) + std::ptrdiff_t(k) * N;
        const auto& ev = es.eigenvalues();
        for (int i = 0; i < N; ++i) re[i] = ev[i].real(), im[i] = ev[i].imag();
    }
    static void eig_values(const Job& j)
    {
        each_object(j, [&](int k) { eig_store(j, k, Solver(cmat(j.a, k), false)); });
    }
    static void eig_vectors(const Job& j)
    {
        each_object(j, [&](int k) {
            const Solver es(cmat(j.a, k), true);
            eig_store(j, k, es);
            mmat(j.d, k) = es.pseudoEigenvectors();
        });
    }
};

// Peers that have the eigen workloads (the plain loops do not).
template <class K>
auto eig_peer(Workload w, int) -> decltype(&K::eig_values, PeerFn())
{
    return w == Workload::EigVal ? &K::eig_values : &K::eig_vectors;
}
template <class K>
PeerFn eig_peer(Workload, long)
{
    return nullptr;
}

// --- tables -----------------------------------------------------------------

template <template <class, int, int> class P, class T, int N, int S>
PeerFn pick(Workload w)
{
    using K = P<T, N, S>;
    switch (w) {
    case Workload::AddMama: return &K::add_mama;
    case Workload::MulMama: return &K::mul_mama;
    case Workload::MulMava: return &K::mul_mava;
    case Workload::MulMac: return &K::mul_mac;
    case Workload::Det: return &K::det;
    case Workload::LU: return &K::lu;
    case Workload::EigVal:
    case Workload::EigVec: return eig_peer<K>(w, 0);
    default: return nullptr;
    }
}

template <template <class, int, int> class P, class T, int S>
PeerFn pick_order(Workload w, int n)
{
    switch (n) {
    case 3: return pick<P, T, 3, S>(w);
    case 4: return pick<P, T, 4, S>(w);
    case 5: return pick<P, T, 5, S>(w);
    case 6: return pick<P, T, 6, S>(w);
    default: return nullptr;
    }
}

template <template <class, int, int> class P>
PeerFn pick_all(Workload w, int elem, int n, int es)
{
    if (es != 1 && es != 2) return nullptr;
    if (elem == 4) return es == 1 ? pick_order<P, float, 1>(w, n) : pick_order<P, float, 2>(w, n);
    if (elem == 8) return es == 1 ? pick_order<P, double, 1>(w, n) : pick_order<P, double, 2>(w, n);
    return nullptr;
}

PeerFn plain_peer(Workload w, int elem, int n, int es) { return pick_all<Plain>(w, elem, n, es); }
PeerFn eigen_peer(Workload w, int elem, int n, int es) { return pick_all<Eig>(w, elem, n, es); }

}  // namespace

KB_PEERS_VISIBLE const PeerSet& KB_PEERS_ENTRY()
{
    static const PeerSet set{&plain_peer, &eigen_peer};
    return set;
}

}  // namespace kb
