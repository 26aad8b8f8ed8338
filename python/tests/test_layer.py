"""Every function of the layer against numpy, on contiguous, transposed and
sliced views of both dtypes: the views must give the contiguous result's
bits, the contiguous result must be within n*eps*condition of numpy's."""

import numpy as np
import pytest

import kelm
from conftest import DTYPES, VIEWS, as_view, eps


def mats(rng, count, n, m=None):
    return rng.standard_normal((count, n, m or n))


def spd(rng, count, n):
    a = rng.standard_normal((count, n, n))
    return a @ np.swapaxes(a, -1, -2) + n * np.eye(n)


def sym(rng, count, n):
    a = rng.standard_normal((count, n, n))
    return (a + np.swapaxes(a, -1, -2)) / 2


def vecs(rng, count, n):
    return rng.standard_normal((count, n))


def cond(a):
    return np.linalg.cond(a.astype(np.float64))


def per_object(x):
    """max |x| of each object of a stack (count, ...)."""
    return np.abs(x).reshape(x.shape[0], -1).max(axis=1)


def close(got, ref, tol):
    """|got - ref| per object within tol (one value per object)."""
    err = per_object(np.asarray(got) - ref)
    assert np.all(err <= tol), "worst error %g, tolerance %g" % (err.max(), tol[np.argmax(err - tol)])


def check_eigenpairs(a, w, v, e, scale=10):
    a64 = a.astype(np.float64)
    size = np.linalg.norm(a64, 2, axis=(-2, -1))
    n = a.shape[-1]
    res = a64 @ v - v * w[..., None, :]
    close(res, 0, scale * n * e * size + 1e-30)


# name: (inputs, call, check(inputs as float64, result, n, eps))
def _chk_matmul(x, r, n, e):
    a, b = x
    close(r, a @ b, 2 * n * e * per_object(np.abs(a) @ np.abs(b)))


def _forward(ref_fn):
    """Within 10*n*eps*cond(A) of numpy's result, relative to its size."""
    def chk(x, r, n, e):
        ref = ref_fn(*x).reshape(len(x[0]), -1)
        close(np.reshape(r, ref.shape), ref, 10 * n * e * cond(x[0]) * per_object(ref) + 1e-300)
    return chk


def _chk_lu(x, r, n, e):
    (a,) = x
    assert np.all(np.sort(r.index, axis=-1) == np.arange(n))
    assert np.all(np.abs(r.L) <= 1)
    close(r.L @ r.U, np.take_along_axis(a, r.perm[..., None], axis=-2), 10 * n * e * per_object(a))


def _chk_cho(x, r, n, e):
    (a,) = x
    ref = np.linalg.cholesky(a)
    c, lower = r
    assert not lower
    close(np.swapaxes(c, -1, -2), ref, 10 * n * e * cond(a) * per_object(ref))


def _chk_qr(x, r, n, e):
    (a,) = x
    q, rr = r
    m = a.shape[-2]
    assert np.all(np.tril(rr, -1) == 0)
    close(q @ rr, a, 20 * m * e * per_object(a))
    close(np.swapaxes(q, -1, -2) @ q, np.eye(n), 20 * m * e * np.ones(len(a)))
    ref = np.linalg.qr(a)[1]
    close(np.abs(np.diagonal(rr, axis1=-2, axis2=-1)), np.abs(np.diagonal(ref, axis1=-2, axis2=-1)),
          20 * m * e * cond(a) * per_object(a))


def _sym_scale(e):
    # float32: the QL sweep's absolute early stop leaves about one matrix in
    # 10^4 with eigenvalues off by up to ~2000 eps*|A| (float64 stays near 10)
    return 10 if e < 1e-10 else 2000


def _chk_eigh(x, r, n, e):
    (a,) = x
    w, v = r
    ref = np.linalg.eigvalsh(a)
    close(w, ref, _sym_scale(e) * n * e * per_object(ref) + 1e-30)
    if v is not None:
        close(np.swapaxes(v, -1, -2) @ v, np.eye(n), 10 * n * e * np.ones(len(a)))
        check_eigenpairs(a, w, v, e, scale=_sym_scale(e))


def _match(w, ref, tol):
    d = np.abs(w[:, :, None] - ref[:, None, :])
    close(d.min(axis=2), 0, tol)
    close(d.min(axis=1), 0, tol)


def _chk_eig(x, r, n, e):
    (a,) = x
    w, v = r
    check_eigenpairs(a, w, v, e, scale=100)
    close(np.linalg.norm(v, axis=-2), 1, 10 * n * e * np.ones(len(a)))
    _match(w, np.linalg.eigvals(a), 1e3 * n * e * per_object(a))


def _chk_eigvals(x, r, n, e):
    (a,) = x
    _match(r, np.linalg.eigvals(a), 1e3 * n * e * per_object(a))


def _elementwise(ref):
    def chk(x, r, n, e):
        close(r.reshape(len(r), -1), ref(*x).reshape(len(r), -1),
              2 * e * per_object(np.abs(x[0]) + np.abs(x[-1])))
    return chk


CASES = {
    "add": (lambda g, c, n: [mats(g, c, n), mats(g, c, n)], kelm.add, _elementwise(np.add)),
    "subtract": (lambda g, c, n: [mats(g, c, n), mats(g, c, n)], kelm.subtract, _elementwise(np.subtract)),
    "add (vectors)": (lambda g, c, n: [vecs(g, 1, n)[0], vecs(g, 1, n)[0]], kelm.add, _elementwise(np.add)),
    "matmul": (lambda g, c, n: [mats(g, c, n), mats(g, c, n, n + 1)], kelm.matmul, _chk_matmul),
    "matmul (one matrix)": (lambda g, c, n: [mats(g, 1, n)[0], mats(g, c, n, 2)], kelm.matmul, _chk_matmul),
    "matvec": (lambda g, c, n: [mats(g, c, n + 1, n), vecs(g, c, n)], kelm.matvec,
               lambda x, r, n, e: _chk_matmul([x[0], x[1][..., None]], r[..., None], n, e)),
    "matmul (vector)": (lambda g, c, n: [mats(g, c, n), vecs(g, 1, n)[0]], kelm.matmul,
                        lambda x, r, n, e: _chk_matmul([x[0], x[1][:, None]], r[..., None], n, e)),
    "transpose": (lambda g, c, n: [mats(g, c, n, n + 2)], kelm.transpose,
                  lambda x, r, n, e: np.testing.assert_array_equal(r, np.swapaxes(x[0], -1, -2))),
    "dot": (lambda g, c, n: [vecs(g, c, n), vecs(g, c, n)], kelm.dot,
            lambda x, r, n, e: close(r[:, None], np.sum(x[0] * x[1], -1)[:, None],
                                     n * e * np.sum(np.abs(x[0] * x[1]), -1))),
    "norm": (lambda g, c, n: [vecs(g, c, n)], kelm.norm,
             lambda x, r, n, e: close(r[:, None], np.linalg.norm(x[0], axis=-1)[:, None],
                                      2 * n * e * per_object(x[0]))),
    "norm (fro)": (lambda g, c, n: [mats(g, c, n, n + 1)], lambda a: kelm.norm(a, "fro", axis=(-2, -1)),
                   lambda x, r, n, e: close(r[:, None], np.linalg.norm(x[0], axis=(-2, -1))[:, None],
                                            2 * n * n * e * per_object(x[0]))),
    "trace": (lambda g, c, n: [mats(g, c, n)], kelm.trace,
              lambda x, r, n, e: close(r[:, None], np.trace(x[0], axis1=-2, axis2=-1)[:, None],
                                       n * e * per_object(x[0]))),
    "det": (lambda g, c, n: [mats(g, c, n)], kelm.det, _forward(np.linalg.det)),
    "inv": (lambda g, c, n: [mats(g, c, n)], kelm.inv, _forward(np.linalg.inv)),
    "solve": (lambda g, c, n: [mats(g, c, n), vecs(g, c, n)], kelm.solve, _forward(np.linalg.solve)),
    "solve (matrix rhs)": (lambda g, c, n: [mats(g, c, n), mats(g, c, n, 2)], kelm.solve, _forward(np.linalg.solve)),
    "lu_factor": (lambda g, c, n: [mats(g, c, n)], kelm.lu_factor, _chk_lu),
    "lu_solve": (lambda g, c, n: [mats(g, c, n), vecs(g, c, n)],
                 lambda a, b: kelm.lu_solve(kelm.lu_factor(a), b), _forward(np.linalg.solve)),
    "cho_factor": (lambda g, c, n: [spd(g, c, n)], kelm.cho_factor, _chk_cho),
    "cho_solve": (lambda g, c, n: [spd(g, c, n), vecs(g, c, n)],
                  lambda a, b: kelm.cho_solve(kelm.cho_factor(a), b), _forward(np.linalg.solve)),
    "cho_solve (lower)": (lambda g, c, n: [spd(g, c, n), mats(g, c, n, 3)],
                          lambda a, b: kelm.cho_solve(kelm.cho_factor(a, lower=True), b), _forward(np.linalg.solve)),
    "qr": (lambda g, c, n: [mats(g, c, n)], kelm.qr, _chk_qr),
    "qr (tall)": (lambda g, c, n: [mats(g, c, n + 2, n)], kelm.qr, _chk_qr),
    "eigh": (lambda g, c, n: [sym(g, c, n)], kelm.eigh, _chk_eigh),
    "eigvalsh": (lambda g, c, n: [sym(g, c, n)], kelm.eigvalsh, lambda x, r, n, e: _chk_eigh(x, (r, None), n, e)),
    "eig": (lambda g, c, n: [mats(g, c, n)], kelm.eig, _chk_eig),
    "eigvals": (lambda g, c, n: [mats(g, c, n)], kelm.eigvals, _chk_eigvals),
}
CROSS = (lambda g, c, n: [vecs(g, c, 3), vecs(g, c, 3)], kelm.cross,
         lambda x, r, n, e: close(r, np.cross(x[0], x[1]), 4 * e * per_object(np.abs(x[0])) * per_object(x[1])))

# Paths whose last bits may differ between contiguous and strided memory: the
# processor's reciprocal-square-root estimate in contiguous float32 kernels.
ESTIMATE = {"cho_factor", "cho_solve", "cho_solve (lower)", "norm"}


def _run(name, case, n, dtype, view, rng, count=5):
    make, call, chk = case
    xs = [x.astype(dtype) for x in make(rng, count, n)]
    cores = [1 if x.ndim <= 2 else 2 for x in xs]  # stacks: (count, n) vectors, (count, m, n) matrices
    base = call(*xs)
    views = [as_view(x, view, c) for x, c in zip(xs, cores)]
    for x, v in zip(xs, views):
        np.testing.assert_array_equal(x, v)
    got = call(*views)
    flat = lambda r: [np.asarray(p) for p in (r if isinstance(r, tuple) else (r,))]
    for g, b in zip(flat(got), flat(base)):
        if dtype == np.float32 and name in ESTIMATE and view != "contiguous":
            np.testing.assert_allclose(g, b, rtol=1e-5, atol=1e-6)
        else:
            np.testing.assert_array_equal(g, b)
    chk([x.astype(np.float64) for x in xs], base, n, eps(dtype))


@pytest.mark.parametrize("view", VIEWS)
@pytest.mark.parametrize("dtype", DTYPES, ids=["32f", "64f"])
@pytest.mark.parametrize("n", [1, 2, 3, 4, 5, 6, 7])
@pytest.mark.parametrize("name", list(CASES))
def test_against_numpy(name, n, dtype, view, rng):
    _run(name, CASES[name], n, dtype, view, rng)


@pytest.mark.parametrize("view", VIEWS)
@pytest.mark.parametrize("dtype", DTYPES, ids=["32f", "64f"])
def test_cross(dtype, view, rng):
    _run("cross", CROSS, 3, dtype, view, rng)


@pytest.mark.parametrize("dtype", DTYPES, ids=["32f", "64f"])
@pytest.mark.parametrize("name", ["matmul", "det", "inv", "solve", "cho_solve", "eigh", "eig", "qr", "dot"])
def test_parallel_gives_serial_bits(name, dtype, rng, threads):
    """Stacks above every parallel threshold give the bits of a one-thread run."""
    make, call, _ = CASES[name]
    xs = [x.astype(dtype) for x in make(rng, 4001, 4)]
    threads(1)
    serial = call(*xs)
    threads(2)
    parallel = call(*xs)
    for s, p in zip(serial if isinstance(serial, tuple) else (serial,),
                    parallel if isinstance(parallel, tuple) else (parallel,)):
        np.testing.assert_array_equal(s, p)


@pytest.mark.parametrize("dtype", DTYPES, ids=["32f", "64f"])
@pytest.mark.parametrize("n", [2, 3, 4])
@pytest.mark.parametrize("nthreads", [1, 2])
def test_eigh_carries_on_after_singular_matrices(n, dtype, nthreads, rng, threads):
    """Singular matrices scattered through a stack: every object gets its
    eigenpairs, the library's singular status notwithstanding."""
    threads(nthreads)
    a = sym(rng, 3000, n)
    a[[0, 5, 6, 1499, 1500, 2999]] = 0
    r = sym(rng, 10, n)
    r[:, :, -1] = r[:, :, 0]
    r[:, -1, :] = r[:, 0, :]  # symmetric and of rank below n
    a[100:110] = r
    a = a.astype(dtype)
    w, v = kelm.eigh(a)
    e = eps(dtype)
    _chk_eigh([a.astype(np.float64)], (w, v), n, e)
    np.testing.assert_allclose(kelm.eigvalsh(a), w, rtol=0, atol=_sym_scale(e) * n * e * np.abs(a).max())


def test_complex_pairs_of_eig(rng):
    a = np.array([[[0.0, -1.0, 0.0], [1.0, 0.0, 0.0], [0.0, 0.0, 2.0]]])
    w, v = kelm.eig(a)
    assert w.dtype == np.complex128 and v.dtype == np.complex128
    np.testing.assert_allclose(np.sort_complex(w[0]), [-1j, 1j, 2], atol=1e-15)
    check_eigenpairs(a, w, v, eps(np.float64))
    w, v = kelm.eig(np.diag([3.0, 1.0, 2.0]).astype(np.float32))
    assert w.dtype == np.float32 and v.dtype == np.float32


@pytest.mark.parametrize("name", ["det", "inv", "eigh", "eigvalsh", "eig", "eigvals", "lu_factor", "qr",
                                  "cho_factor", "trace", "transpose"])
def test_empty_stacks(name):
    a = np.zeros((0, 4, 4))
    r = getattr(kelm, name)(a)
    ref = {"det": (0,), "trace": (0,), "eigvalsh": (0, 4), "eigvals": (0, 4), "eigh": (0, 4),
           "eig": (0, 4)}.get(name, (0, 4, 4))
    first = r[0] if isinstance(r, tuple) else r
    assert first.shape == ref
    assert kelm.solve(a, np.zeros((0, 4))).shape == (0, 4)
    assert kelm.matmul(a, np.zeros((0, 4, 2))).shape == (0, 4, 2)
    assert kelm.dot(np.zeros((0, 3)), np.zeros((0, 3))).shape == (0,)


@pytest.mark.parametrize("dtype", DTYPES, ids=["32f", "64f"])
def test_batch_axes_and_layouts_that_need_a_copy(dtype, rng):
    """Several batch axes, collapsible or not, negative and zero strides:
    the results are those of the same values in contiguous memory."""
    a = spd(rng, 24, 4).astype(dtype).reshape(2, 3, 4, 4, 4)
    b = vecs(rng, 24, 4).astype(dtype).reshape(2, 3, 4, 4)
    ref_inv = kelm.inv(a.reshape(-1, 4, 4)).reshape(a.shape)
    np.testing.assert_array_equal(kelm.inv(a), ref_inv)
    for view in (a[:, :2], a[::-1], a[..., ::-1, :], np.broadcast_to(a[:1], a.shape)):
        np.testing.assert_array_equal(kelm.inv(view), kelm.inv(np.ascontiguousarray(view)))
        np.testing.assert_array_equal(kelm.det(view), kelm.det(np.ascontiguousarray(view)))
    np.testing.assert_array_equal(kelm.solve(a, b), kelm.solve(a.reshape(-1, 4, 4), b.reshape(-1, 4)).reshape(b.shape))
    # a single matrix against a stack broadcasts
    np.testing.assert_array_equal(kelm.solve(a[:1], b), kelm.solve(np.broadcast_to(a[:1], a.shape).copy(), b))
    np.testing.assert_array_equal(kelm.matmul(a, b[0, 0, 0]), kelm.matvec(a, np.broadcast_to(b[0, 0, 0], b.shape).copy()))
    w, v = kelm.eigh(a)
    assert w.shape == b.shape and v.shape == a.shape


def test_scalar_results_of_single_objects(rng):
    a = mats(rng, 1, 3)[0]
    assert np.ndim(kelm.det(a)) == 0 and np.ndim(kelm.trace(a)) == 0
    assert np.ndim(kelm.norm(a[0])) == 0
    assert kelm.norm(a, axis=0, keepdims=True).shape == (1, 3)
    np.testing.assert_allclose(kelm.norm(a, axis=0), np.linalg.norm(a, axis=0), rtol=1e-15)
    np.testing.assert_allclose(kelm.matmul(a[0], a[1]), a[0] @ a[1], rtol=1e-15)


def test_exactly_singular_systems_raise():
    """The determinant's wide-precision closed form finds them; LU would not."""
    a = np.arange(1.0, 10.0).reshape(3, 3)
    with pytest.raises(np.linalg.LinAlgError):
        kelm.solve(a, np.ones(3))
    f = kelm.lu_factor(a)  # a pivot of rounding size passes the LU test
    assert np.isfinite(f.lu).all()


def test_det_closed_forms_are_exact_where_minors_cancel():
    """Order 3: the exact determinant is 1, numpy's elimination loses it."""
    a = np.array([[1e8, 1e8 + 1, 0.0], [1e8 - 1, 1e8, 0.0], [0.0, 0.0, 1.0]])
    assert kelm.det(a) == 1.0


@pytest.mark.parametrize("dtype", DTYPES, ids=["32f", "64f"])
def test_long_stacks_go_in_blocks_with_the_same_bits(dtype, rng):
    """solve and eigh work through long stacks block by block: the bits of
    whole-stack calls, singular matrices at the block edges included."""
    n, count = 4, 20000
    a = mats(rng, count, n).astype(dtype)
    b = vecs(rng, count, n).astype(dtype)
    bm = mats(rng, count, n, 2).astype(dtype)
    ai = kelm.inv(a)
    np.testing.assert_array_equal(kelm.solve(a, b), kelm.matvec(ai, b))
    np.testing.assert_array_equal(kelm.solve(a, bm), kelm.matmul(ai, bm))
    s = sym(rng, count, n)
    for k in (0, 6552, 6553, 6554, 13106, 19999):
        s[k] = 0
        s[k + 1 if k < count - 1 else k - 1, :, 0] = s[k + 1 if k < count - 1 else k - 1, :, 1]
    s = (s + np.swapaxes(s, -1, -2)) / 2
    s = s.astype(dtype)
    _chk_eigh([s.astype(np.float64)], kelm.eigh(s), n, eps(dtype))
