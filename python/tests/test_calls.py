"""What the layer hands to the library (no copies of strided views), where
it writes (out=), and how it fails."""

import numpy as np
import pytest

import kelm
from kelm import _core
from conftest import as_view

ffi = kelm.raw.ffi


class Recorder:
    """Stands in for the library and records every call's arguments, with
    pointers as integer addresses."""

    def __init__(self, lib):
        self.lib, self.calls = lib, []

    def __getattr__(self, name):
        fn = getattr(self.lib, name)

        def call(*args):
            self.calls.append((name, [int(ffi.cast("uintptr_t", a)) if isinstance(a, ffi.CData) else a
                                      for a in args]))
            return fn(*args)
        return call


@pytest.fixture
def recorder(monkeypatch):
    rec = Recorder(kelm.raw.lib)
    monkeypatch.setattr(_core, "lib", rec)
    return rec


def described(args, x, core):
    """Is x passed as itself: its address followed by its object stride and core strides?"""
    want = [x.__array_interface__["data"][0], x.strides[0]] + list(x.strides[-core:])
    return any(args[i:i + len(want)] == want for i in range(len(args)))


def spd(rng, count, n):
    a = rng.standard_normal((count, n, n))
    return a @ np.swapaxes(a, -1, -2) + n * np.eye(n)


# function, operand makers (count, n) -> array with its core rank
NO_COPY = {
    "add": (kelm.add, [(2, "m"), (2, "m")]),
    "matmul": (kelm.matmul, [(2, "m"), (2, "m")]),
    "matvec": (kelm.matvec, [(2, "m"), (1, "v")]),
    "transpose": (kelm.transpose, [(2, "m")]),
    "dot": (kelm.dot, [(1, "v"), (1, "v")]),
    "cross": (kelm.cross, [(1, "3"), (1, "3")]),
    "norm": (kelm.norm, [(1, "v")]),
    "trace": (kelm.trace, [(2, "m")]),
    "det": (kelm.det, [(2, "m")]),
    "inv": (kelm.inv, [(2, "m")]),
    "solve": (kelm.solve, [(2, "m"), (1, "v")]),
    "lu_factor": (kelm.lu_factor, [(2, "m")]),
    "cho_factor": (kelm.cho_factor, [(2, "s")]),
    "qr": (kelm.qr, [(2, "m")]),
    "eigh": (kelm.eigh, [(2, "s")]),
    "eigvalsh": (kelm.eigvalsh, [(2, "s")]),
    "eig": (kelm.eig, [(2, "m")]),
    "eigvals": (kelm.eigvals, [(2, "m")]),
}


def make(kind, rng, dtype, count=6, n=4):
    if kind == "m":
        x = rng.standard_normal((count, n, n)) + n * np.eye(n)
    elif kind == "s":
        x = spd(rng, count, n)
    else:
        x = rng.standard_normal((count, 3 if kind == "3" else n))
    return x.astype(dtype)


@pytest.mark.parametrize("view", ["transposed", "sliced"])
@pytest.mark.parametrize("dtype", [np.float32, np.float64], ids=["32f", "64f"])
@pytest.mark.parametrize("name", list(NO_COPY))
def test_strided_views_go_to_the_library_uncopied(name, dtype, view, rng, recorder):
    fn, ops = NO_COPY[name]
    xs = [as_view(make(kind, rng, dtype), view, core) for core, kind in ops]
    fn(*xs)
    for x, (core, _) in zip(xs, ops):
        assert any(described(args, x, core) for _, args in recorder.calls), recorder.calls


# name: (call with out, operands, shape of the result)
def _outs(rng, dtype):
    m = make("m", rng, dtype)
    s = make("s", rng, dtype)
    v = make("v", rng, dtype)
    v3 = make("3", rng, dtype)
    return {
        "add": (lambda out: kelm.add(m, m, out=out), (6, 4, 4)),
        "subtract": (lambda out: kelm.subtract(m, m, out=out), (6, 4, 4)),
        "matmul": (lambda out: kelm.matmul(m, m, out=out), (6, 4, 4)),
        "matvec": (lambda out: kelm.matvec(m, v, out=out), (6, 4)),
        "transpose": (lambda out: kelm.transpose(m, out=out), (6, 4, 4)),
        "dot": (lambda out: kelm.dot(v, v, out=out), (6,)),
        "cross": (lambda out: kelm.cross(v3, v3[::-1], out=out), (6, 3)),
        "norm": (lambda out: kelm.norm(v, out=out), (6,)),
        "trace": (lambda out: kelm.trace(m, out=out), (6,)),
        "det": (lambda out: kelm.det(m, out=out), (6,)),
        "inv": (lambda out: kelm.inv(m, out=out), (6, 4, 4)),
        "solve": (lambda out: kelm.solve(m, v, out=out), (6, 4)),
        "lu_solve": (lambda out: kelm.lu_solve(kelm.lu_factor(m), v, out=out), (6, 4)),
        "cho_solve": (lambda out: kelm.cho_solve(kelm.cho_factor(s), v, out=out), (6, 4)),
        "eigvalsh": (lambda out: kelm.eigvalsh(s, out=out), (6, 4)),
        "eigh vectors": (lambda out: kelm.eigh(s, out=(None, out))[1], (6, 4, 4)),
    }


@pytest.mark.parametrize("view", ["contiguous", "transposed", "sliced"])
@pytest.mark.parametrize("dtype", [np.float32, np.float64], ids=["32f", "64f"])
def test_out_receives_the_result_and_nothing_else(dtype, view, rng):
    for name, (call, shape) in _outs(rng, dtype).items():
        expected = call(None)
        big = np.full((2 * shape[0],) + tuple(2 * s for s in shape[1:]), -7.0, dtype)
        out = big[(slice(None, None, 2),) * len(shape)] if view == "sliced" else (
            as_view(np.empty(shape, dtype), view, len(shape) - 1) if view == "transposed" else np.empty(shape, dtype))
        r = call(out)
        assert r is out and np.shares_memory(r, out), name
        np.testing.assert_array_equal(out, expected, err_msg=name)
        if view == "sliced":
            assert np.shares_memory(r, big), name
            rest = big.copy()
            rest[(slice(None, None, 2),) * len(shape)] = -7.0
            assert np.all(rest == -7.0), name


def test_out_may_be_an_operand_exactly_or_overlap_it(rng):
    a = rng.standard_normal((5, 3, 3))
    b = rng.standard_normal((5, 3, 3))
    s = a + b
    r = kelm.add(a, b, out=a)
    assert r is a and np.array_equal(a, s)
    m = rng.standard_normal((5, 3, 3))
    t = np.swapaxes(m, -1, -2).copy()
    assert kelm.transpose(m, out=m) is m and np.array_equal(m, t)  # through a temporary
    m = rng.standard_normal((5, 3, 3))
    p = m @ m
    assert np.array_equal(kelm.matmul(m, m, out=m), p)


CANARY = -123.25


def _errors(rng):
    m = rng.standard_normal((4, 3, 3))
    v = rng.standard_normal((4, 3))
    out = lambda shape, dtype=np.float64: np.full(shape, CANARY, dtype)
    ro = out((4, 3, 3))
    ro.flags.writeable = False
    return [
        # (description, exception, call, the out array it must leave alone)
        ("integer operand", TypeError, lambda o: kelm.inv(np.ones((4, 3, 3), int), out=o), out((4, 3, 3))),
        ("mixed dtypes", TypeError, lambda o: kelm.add(m, m.astype(np.float32), out=o), out((4, 3, 3))),
        ("float16", TypeError, lambda o: kelm.det(m.astype(np.float16), out=o), out(4)),
        ("out dtype", TypeError, lambda o: kelm.inv(m, out=o), out((4, 3, 3), np.float32)),
        ("out not an array", TypeError, lambda o: kelm.det(m, out=[0.0] * 4), out(4)),
        ("out shape", ValueError, lambda o: kelm.matmul(m, m, out=o), out((4, 3, 4))),
        ("eigh out pair", TypeError, lambda o: kelm.eigh(m, out=o), out((4, 3, 3))),
        ("eigh out overlaps", ValueError, lambda o: kelm.eigh(m, out=(o[:, 0], o)), out((4, 3, 3))),
        ("read-only out", ValueError, lambda o: kelm.inv(m, out=o), ro),
        ("not square", ValueError, lambda o: kelm.det(m[:, :2], out=o), out(4)),
        ("inner sizes", ValueError, lambda o: kelm.matmul(m, m[:, :2], out=o), out((4, 3, 3))),
        ("vector length", ValueError, lambda o: kelm.matvec(m, v[:, :2], out=o), out((4, 3))),
        ("cross of 4-vectors", ValueError, lambda o: kelm.cross(m[:, :, :2], m[:, :, :2], out=o), out((4, 3, 2))),
        ("batch shapes", ValueError, lambda o: kelm.solve(m, v[:3], out=o), out((4, 3))),
        ("wide qr", ValueError, lambda o: kelm.qr(m[:, :2]), None),
        ("empty matrices", ValueError, lambda o: kelm.inv(np.zeros((4, 0, 0)), out=o), out((4, 0, 0))),
        ("norm ord", ValueError, lambda o: kelm.norm(v, ord=1, out=o), out(4)),
        ("index out of range", ValueError,
         lambda o: kelm.lu_solve(kelm.LUFactor(m, np.full((4, 3), 3, np.intc)), v, out=o), out((4, 3))),
        ("singular solve", np.linalg.LinAlgError, lambda o: kelm.solve(np.zeros((4, 3, 3)), v, out=o), out((4, 3))),
    ]


def test_errors_are_raised_before_anything_is_written(rng):
    for what, exc, call, o in _errors(rng):
        before = None if o is None else o.copy()
        with pytest.raises(exc):
            call(o)
        if o is not None:
            np.testing.assert_array_equal(o, before, err_msg=what)


@pytest.mark.parametrize("dtype", [np.float32, np.float64], ids=["32f", "64f"])
def test_statuses_raise_with_their_names(dtype):
    t = "32f" if dtype == np.float32 else "64f"
    z = np.zeros((3, 4, 4), dtype)
    eye = np.broadcast_to(np.eye(4, dtype=dtype), (3, 4, 4))
    neg = -eye
    cases = [
        (lambda: kelm.inv(z), "kelErrSingular", "kelmInvert_ma_" + t, "inv"),
        (lambda: kelm.lu_factor(z), "kelErrSingular", "kelmLUDecomp_ma_" + t, "lu_factor"),
        (lambda: kelm.solve(z, z[..., 0]), "kelErrSingular", "kelmInvert_ma_" + t, "solve"),
        (lambda: kelm.solve(z[:, :2, :2], z[..., :2, 0]), "kelErrSingular", "kelmInvert_ma_" + t, "solve"),
        (lambda: kelm.cho_factor(neg), "kelErrNotPosDef", "kelmCholeskyDecomp_ma_" + t, "cho_factor"),
        (lambda: kelm.qr(z), "kelErrTinyDivisor", "kelmQRDecomp_ma_" + t, "qr"),
    ]
    for call, status, operation, function in cases:
        with pytest.raises(kelm.KelmError) as info:
            call()
        e = info.value
        assert isinstance(e, np.linalg.LinAlgError)
        assert (e.status_name, e.operation, e.function) == (status, operation, function)
        assert status in str(e) and operation in str(e)


def test_argument_statuses_of_raw_calls_are_not_linalg_errors():
    from kelm._errors import check
    lib, ffi = kelm.raw.lib, kelm.raw.ffi
    buf = ffi.new("double[20]")
    st = lib.kelmDet_ma_64f(buf, 32, 16, 8, 2, buf, buf, 0)
    with pytest.raises(kelm.KelmError) as info:
        check(st, "kelmDet_ma_64f")
    assert info.value.status_name == "kelErrCount" and info.value.status == -203
    assert not isinstance(info.value, np.linalg.LinAlgError)


def test_factor_objects(rng):
    a = spd(rng, 5, 4)
    c, lower = kelm.cho_factor(a)
    np.testing.assert_allclose(np.swapaxes(c, -1, -2) @ c, a, rtol=1e-13)
    f = kelm.cho_factor(a, lower=True)
    b = rng.standard_normal((5, 4))
    # a plain (c, lower) pair, as scipy lays it out, solves the same systems
    np.testing.assert_allclose(kelm.cho_solve((f.c, True), b), kelm.cho_solve(f, b), rtol=1e-13)
    np.testing.assert_allclose(kelm.cho_solve((c, False), b), kelm.cho_solve(f, b), rtol=1e-13)
    lu = kelm.lu_factor(a)
    lu2 = kelm.LUFactor(lu.lu.copy(), lu.index.astype(np.int64))
    np.testing.assert_array_equal(kelm.lu_solve(lu2, b), kelm.lu_solve(lu, b))
    # order 7 from a transposed view: each matrix keeps its own permutation
    m = rng.standard_normal((4, 7, 7))
    f7 = kelm.lu_factor(np.ascontiguousarray(np.swapaxes(m, 1, 2)).swapaxes(1, 2))
    np.testing.assert_allclose(f7.L @ f7.U, np.take_along_axis(m, f7.perm[..., None], 1), atol=1e-13)
