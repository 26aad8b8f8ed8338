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
#include <limits>
#include <type_traits>
#include <utility>

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

    // Gauss-Jordan with partial pivoting on a local [A | I].
    static void invert(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            T* z = d + std::ptrdiff_t(k) * MS;
            T m[N][2 * N];
            for (int i = 0; i < N; ++i)
                for (int c = 0; c < N; ++c) m[i][c] = x[(i * N + c) * S], m[i][N + c] = T(i == c);
            for (int q = 0; q < N; ++q) {
                int p = q;
                for (int i = q + 1; i < N; ++i)
                    if (std::abs(m[i][q]) > std::abs(m[p][q])) p = i;
                if (p != q)
                    for (int c = 0; c < 2 * N; ++c) std::swap(m[p][c], m[q][c]);
                const T r = T(1) / m[q][q];
                for (int c = 0; c < 2 * N; ++c) m[q][c] *= r;
                for (int i = 0; i < N; ++i) {
                    if (i == q) continue;
                    const T f = m[i][q];
                    for (int c = 0; c < 2 * N; ++c) m[i][c] -= f * m[q][c];
                }
            }
            for (int i = 0; i < N; ++i)
                for (int c = 0; c < N; ++c) z[(i * N + c) * S] = m[i][N + c];
        });
    }

    // Vector workloads: x in a, y in b; Gaxpy's matrix is the first of a and
    // its z vectors follow it.
    static void dot_vava(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        const T* b = static_cast<const T*>(job.b);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * VS;
            const T* y = b + std::ptrdiff_t(k) * VS;
            T s = 0;
            for (int i = 0; i < N; ++i) s += x[i * S] * y[i * S];
            d[k] = s;
        });
    }

    static void cross_vava(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        const T* b = static_cast<const T*>(job.b);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * VS;
            const T* y = b + std::ptrdiff_t(k) * VS;
            T* z = d + std::ptrdiff_t(k) * VS;
            const T r0 = x[S] * y[2 * S] - x[2 * S] * y[S];
            const T r1 = x[2 * S] * y[0] - x[0] * y[2 * S];
            const T r2 = x[0] * y[S] - x[S] * y[0];
            z[0] = r0, z[S] = r1, z[2 * S] = r2;
        });
    }

    template <bool Two>
    static void scaled_vava(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        const T* b = static_cast<const T*>(job.b);
        T* d = static_cast<T*>(job.d);
        const T c = T(job.c), c2 = T(0.5);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * VS;
            const T* y = b + std::ptrdiff_t(k) * VS;
            T* z = d + std::ptrdiff_t(k) * VS;
            for (int i = 0; i < N; ++i) z[i * S] = Two ? x[i * S] * c + y[i * S] * c2 : x[i * S] * c + y[i * S];
        });
    }
    static void saxpy_vava(const Job& job) { scaled_vava<false>(job); }
    static void lcomb_vava(const Job& job) { scaled_vava<true>(job); }

    static void gaxpy_mva(const Job& job)
    {
        const T* m = static_cast<const T*>(job.a);
        const T* zs = m + MS;
        const T* b = static_cast<const T*>(job.b);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* v = b + std::ptrdiff_t(k) * VS;
            const T* z = zs + std::ptrdiff_t(k) * VS;
            T* r = d + std::ptrdiff_t(k) * VS;
            for (int i = 0; i < N; ++i) {
                T s = 0;
                for (int p = 0; p < N; ++p) s += m[(i * N + p) * S] * v[p * S];
                r[i * S] = s + z[i * S];
            }
        });
    }

    // Cholesky-Banachiewicz on the lower triangle, then forward and backward
    // substitution.
    static void chol(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        const T* b = static_cast<const T*>(job.b);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            const T* v = b + std::ptrdiff_t(k) * VS;
            T* z = d + std::ptrdiff_t(k) * VS;
            T l[N][N], r[N];
            for (int i = 0; i < N; ++i)
                for (int c = 0; c <= i; ++c) {
                    T s = x[(i * N + c) * S];
                    for (int q = 0; q < c; ++q) s -= l[i][q] * l[c][q];
                    l[i][c] = i == c ? std::sqrt(s) : s / l[c][c];
                }
            for (int i = 0; i < N; ++i) {
                T s = v[i * S];
                for (int q = 0; q < i; ++q) s -= l[i][q] * r[q];
                r[i] = s / l[i][i];
            }
            for (int i = N - 1; i >= 0; --i) {
                T s = r[i];
                for (int q = i + 1; q < N; ++q) s -= l[q][i] * r[q];
                r[i] = s / l[i][i];
            }
            for (int i = 0; i < N; ++i) z[i * S] = r[i];
        });
    }

    static void copy_ma(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            T* z = d + std::ptrdiff_t(k) * MS;
            for (int i = 0; i < N * N; ++i) z[i * S] = x[i * S];
        });
    }

    static void transpose_ma(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            T* z = d + std::ptrdiff_t(k) * MS;
            for (int i = 0; i < N; ++i)
                for (int c = 0; c < N; ++c) z[(c * N + i) * S] = x[(i * N + c) * S];
        });
    }

    static void l2norm(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * VS;
            T s = 0;
            for (int i = 0; i < N; ++i) s += x[i * S] * x[i * S];
            d[k] = std::sqrt(s);
        });
    }

    static void frobnorm(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            T s = 0;
            for (int i = 0; i < N * N; ++i) s += x[i * S] * x[i * S];
            d[k] = std::sqrt(s);
        });
    }

    static void trace(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            T s = 0;
            for (int i = 0; i < N; ++i) s += x[(i * N + i) * S];
            d[k] = s;
        });
    }

    // The obvious loop: the four rows' sums, then three divisions by w.
    static void affine(const Job& job)
    {
        const float* m = affine_matrix(S);
        const float* a = static_cast<const float*>(job.a);
        float* d = static_cast<float*>(job.d);
        each_object(job, [=](int k) {
            const float* p = a + std::ptrdiff_t(k) * 3 * S;
            float* r = d + std::ptrdiff_t(k) * 3 * S;
            const float x = p[0], y = p[S], z = p[2 * S];
            float h[4];
            for (int i = 0; i < 4; ++i)
                h[i] = m[(4 * i) * S] * x + m[(4 * i + 1) * S] * y + m[(4 * i + 2) * S] * z + m[(4 * i + 3) * S];
            for (int i = 0; i < 3; ++i) r[i * S] = h[i] / h[3];
        });
    }

    // Cyclic Jacobi on a local copy until the off-diagonal part is below
    // rounding, then a descending selection sort; values to d (N per matrix,
    // contiguous), vectors as columns to f.
    template <bool Vectors>
    static void eig_sym(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        T* d = static_cast<T*>(job.d);
        T* f = static_cast<T*>(job.f);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            T m[N][N], v[N][N];
            for (int i = 0; i < N; ++i)
                for (int c = 0; c < N; ++c) m[i][c] = x[(i * N + c) * S], v[i][c] = T(i == c);
            for (int sweep = 0; sweep < 50; ++sweep) {
                T off = 0, diag = 0;
                for (int p = 0; p < N; ++p) {
                    diag += m[p][p] * m[p][p];
                    for (int q = p + 1; q < N; ++q) off += m[p][q] * m[p][q];
                }
                if (off <= diag * std::numeric_limits<T>::epsilon() * std::numeric_limits<T>::epsilon()) break;
                for (int p = 0; p < N; ++p)
                    for (int q = p + 1; q < N; ++q) {
                        if (m[p][q] == 0) continue;
                        const T th = (m[q][q] - m[p][p]) / (2 * m[p][q]);
                        const T t = (th >= 0 ? T(1) : T(-1)) / (std::abs(th) + std::sqrt(th * th + 1));
                        const T c = 1 / std::sqrt(t * t + 1), s = t * c;
                        for (int r = 0; r < N; ++r) {
                            const T y = m[r][p], z = m[r][q];
                            m[r][p] = c * y - s * z, m[r][q] = s * y + c * z;
                        }
                        for (int r = 0; r < N; ++r) {
                            const T y = m[p][r], z = m[q][r];
                            m[p][r] = c * y - s * z, m[q][r] = s * y + c * z;
                        }
                        if (Vectors)
                            for (int r = 0; r < N; ++r) {
                                const T y = v[r][p], z = v[r][q];
                                v[r][p] = c * y - s * z, v[r][q] = s * y + c * z;
                            }
                    }
            }
            T* val = d + std::ptrdiff_t(k) * N;
            for (int i = 0; i < N; ++i) val[i] = m[i][i];
            for (int p = 0; p + 1 < N; ++p) {
                int b = p;
                for (int q = p + 1; q < N; ++q)
                    if (val[q] > val[b]) b = q;
                std::swap(val[p], val[b]);
                if (Vectors)
                    for (int r = 0; r < N; ++r) std::swap(v[r][p], v[r][b]);
            }
            if (Vectors) {
                T* z = f + std::ptrdiff_t(k) * MS;
                for (int i = 0; i < N; ++i)
                    for (int c = 0; c < N; ++c) z[(i * N + c) * S] = v[i][c];
            }
        });
    }
    static void eig_sym_values(const Job& job) { eig_sym<false>(job); }
    static void eig_sym_vectors(const Job& job) { eig_sym<true>(job); }

    // Householder reflections on a local copy, applied to b as they are
    // formed, then the triangular solve.
    static void qr(const Job& job)
    {
        const T* a = static_cast<const T*>(job.a);
        const T* b = static_cast<const T*>(job.b);
        T* d = static_cast<T*>(job.d);
        each_object(job, [=](int k) {
            const T* x = a + std::ptrdiff_t(k) * MS;
            const T* v = b + std::ptrdiff_t(k) * VS;
            T* z = d + std::ptrdiff_t(k) * VS;
            T m[N][N], r[N], u[N];
            for (int i = 0; i < N; ++i) {
                for (int c = 0; c < N; ++c) m[i][c] = x[(i * N + c) * S];
                r[i] = v[i * S];
            }
            for (int q = 0; q < N - 1; ++q) {
                T s2 = 0;
                for (int i = q; i < N; ++i) s2 += m[i][q] * m[i][q];
                const T alpha = m[q][q] > 0 ? -std::sqrt(s2) : std::sqrt(s2);
                for (int i = q; i < N; ++i) u[i] = m[i][q];
                u[q] -= alpha;
                T uu = 0;
                for (int i = q; i < N; ++i) uu += u[i] * u[i];
                const T beta = T(2) / uu;
                for (int c = q; c < N; ++c) {
                    T t = 0;
                    for (int i = q; i < N; ++i) t += u[i] * m[i][c];
                    t *= beta;
                    for (int i = q; i < N; ++i) m[i][c] -= t * u[i];
                }
                T t = 0;
                for (int i = q; i < N; ++i) t += u[i] * r[i];
                t *= beta;
                for (int i = q; i < N; ++i) r[i] -= t * u[i];
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
    static void invert(const Job& j)
    {
        each_object(j, [&](int k) { mmat(j.d, k) = cmat(j.a, k).inverse(); });
    }
    static void dot_vava(const Job& j)
    {
        T* d = static_cast<T*>(j.d);
        each_object(j, [&](int k) { d[k] = cvec(j.a, k).dot(cvec(j.b, k)); });
    }
    static void cross_vava(const Job& j)
    {
        each_object(j, [&](int k) {
            mvec(j.d, k).template head<3>() = cvec(j.a, k).template head<3>().cross(cvec(j.b, k).template head<3>());
        });
    }
    static void saxpy_vava(const Job& j)
    {
        const T c = T(j.c);
        each_object(j, [&](int k) { mvec(j.d, k) = cvec(j.a, k) * c + cvec(j.b, k); });
    }
    static void lcomb_vava(const Job& j)
    {
        const T c = T(j.c), c2 = T(0.5);
        each_object(j, [&](int k) { mvec(j.d, k) = cvec(j.a, k) * c + cvec(j.b, k) * c2; });
    }
    static void gaxpy_mva(const Job& j)
    {
        const CMat m = cmat(j.a, 0);
        const T* zs = static_cast<const T*>(j.a) + MS;
        each_object(j, [&](int k) { mvec(j.d, k).noalias() = m * cvec(j.b, k) + cvec(zs, k); });
    }
    static void chol(const Job& j)
    {
        each_object(j, [&](int k) { mvec(j.d, k) = cmat(j.a, k).llt().solve(cvec(j.b, k)); });
    }
    static void copy_ma(const Job& j)
    {
        each_object(j, [&](int k) { mmat(j.d, k) = cmat(j.a, k); });
    }
    static void transpose_ma(const Job& j)
    {
        each_object(j, [&](int k) { mmat(j.d, k) = cmat(j.a, k).transpose(); });
    }
    static void l2norm(const Job& j)
    {
        T* d = static_cast<T*>(j.d);
        each_object(j, [&](int k) { d[k] = cvec(j.a, k).norm(); });
    }
    static void frobnorm(const Job& j)
    {
        T* d = static_cast<T*>(j.d);
        each_object(j, [&](int k) { d[k] = cmat(j.a, k).norm(); });
    }
    static void trace(const Job& j)
    {
        T* d = static_cast<T*>(j.d);
        each_object(j, [&](int k) { d[k] = cmat(j.a, k).trace(); });
    }
    // Matrix4f times Vector4f(x, y, z, 1), then the division by w.
    static void affine(const Job& j)
    {
        using M4 = Eigen::Matrix<float, 4, 4, Eigen::RowMajor>;
        using P3 = Eigen::Matrix<float, 3, 1>;
        using PStride = std::conditional_t<S == 1, Eigen::InnerStride<1>, Eigen::InnerStride<S>>;
        const M4 m = Eigen::Map<const M4, Eigen::Unaligned, std::conditional_t<S == 1, Eigen::Stride<0, 0>, Eigen::Stride<4 * S, S>>>(affine_matrix(S));
        const float* a = static_cast<const float*>(j.a);
        float* d = static_cast<float*>(j.d);
        each_object(j, [&](int k) {
            const Eigen::Map<const P3, Eigen::Unaligned, PStride> p(a + std::ptrdiff_t(k) * 3 * S);
            const Eigen::Vector4f h = m * Eigen::Vector4f(p[0], p[1], p[2], 1.0f);
            Eigen::Map<P3, Eigen::Unaligned, PStride>(d + std::ptrdiff_t(k) * 3 * S) = h.head<3>() / h[3];
        });
    }
    // The iterative solver (tridiagonalisation and QR), values ascending:
    // stored descending like the library's.
    static void eig_sym_values(const Job& j)
    {
        T* d = static_cast<T*>(j.d);
        each_object(j, [&](int k) {
            const Eigen::SelfAdjointEigenSolver<Eigen::Matrix<T, N, N>> es(cmat(j.a, k), Eigen::EigenvaluesOnly);
            for (int i = 0; i < N; ++i) d[std::ptrdiff_t(k) * N + i] = es.eigenvalues()[N - 1 - i];
        });
    }
    static void eig_sym_vectors(const Job& j)
    {
        T* d = static_cast<T*>(j.d);
        each_object(j, [&](int k) {
            const Eigen::SelfAdjointEigenSolver<Eigen::Matrix<T, N, N>> es(cmat(j.a, k), Eigen::ComputeEigenvectors);
            auto v = mmat(j.f, k);
            for (int i = 0; i < N; ++i) {
                d[std::ptrdiff_t(k) * N + i] = es.eigenvalues()[N - 1 - i];
                v.col(i) = es.eigenvectors().col(N - 1 - i);
            }
        });
    }
    static void qr(const Job& j)
    {
        each_object(j, [&](int k) {
            const Eigen::HouseholderQR<Eigen::Matrix<T, N, N>> f(cmat(j.a, k));
            mvec(j.d, k) = f.solve(cvec(j.b, k));
        });
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
    case Workload::Invert: return &K::invert;
    case Workload::DotVava: return &K::dot_vava;
    case Workload::CrossVava: return &K::cross_vava;
    case Workload::SaxpyVava: return &K::saxpy_vava;
    case Workload::LCombVava: return &K::lcomb_vava;
    case Workload::GaxpyMva: return &K::gaxpy_mva;
    case Workload::Chol: return &K::chol;
    case Workload::CopyMa: return &K::copy_ma;
    case Workload::TransposeMa: return &K::transpose_ma;
    case Workload::L2Norm: return &K::l2norm;
    case Workload::FrobNorm: return &K::frobnorm;
    case Workload::Trace: return &K::trace;
    case Workload::Affine:
        if constexpr (std::is_same_v<T, float>) return &K::affine;
        return nullptr;
    case Workload::EigSymValues: return &K::eig_sym_values;
    case Workload::EigSymVectors: return &K::eig_sym_vectors;
    case Workload::QR: return &K::qr;
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
