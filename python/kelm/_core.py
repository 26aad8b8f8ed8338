"""NumPy layer: stacks of small matrices and vectors handed to the library
as strided descriptions, without copies where the library can take them."""

from collections import namedtuple
import math

import numpy as np

from . import raw as _raw
from ._errors import check

ffi, lib = _raw.ffi, _raw.lib
_INT_MAX = 2**31 - 1
_SUFFIX = {np.dtype(np.float32): ("32f", "float *"), np.dtype(np.float64): ("64f", "double *")}
_COMPLEX = {np.dtype(np.float32): np.complex64, np.dtype(np.float64): np.complex128}
# Scratch memory per block of the blocked operations (solve, eigh): small
# enough to stay in cache, large enough that a block's parallel region is
# worth its start.
_BLOCK_BYTES = 4 << 20
_SINGULAR = next(v for v, n in _raw.STATUS_NAMES.items() if n == "kelErrSingular")

EighResult = namedtuple("EighResult", "eigenvalues eigenvectors")
EigResult = namedtuple("EigResult", "eigenvalues eigenvectors")
QRResult = namedtuple("QRResult", "Q R")


# --- operands -------------------------------------------------------------------------------

def _floats(fname, *arrays):
    """The operands as float32 or float64 arrays of one dtype (TypeError otherwise)."""
    out = []
    for x in arrays:
        a = np.asarray(x)
        if a.dtype.kind != "f" or a.dtype.itemsize not in (4, 8):
            raise TypeError("kelm.%s: float32 or float64 operands expected, got %s" % (fname, a.dtype))
        if not a.dtype.isnative:
            a = a.astype(a.dtype.newbyteorder("="))
        out.append(a)
    dtypes = {a.dtype for a in out}
    if len(dtypes) > 1:
        raise TypeError("kelm.%s: operands of one dtype expected, got %s"
                        % (fname, " and ".join(str(a.dtype) for a in out)))
    return out


def _address(a):
    return a.__array_interface__["data"][0]


def _stride_ok(s, item):
    return 0 < s <= _INT_MAX and s % item == 0


def _describe(a, core):
    """(count, object stride, core strides) of ``a`` seen as count objects
    made of its last ``core`` axes, or None when the library cannot take the
    memory as it is (negative, zero or odd strides, batch axes that do not
    collapse into one object stride, misaligned data).  Strides of axes of
    length 1 play no part and are replaced by valid ones."""
    item = a.itemsize
    if _address(a) % item:
        return None
    nb = a.ndim - core
    strides = []
    for n, s in zip(a.shape[nb:], a.strides[nb:]):
        if n == 1:
            s = item
        elif not _stride_ok(s, item):
            return None
        strides.append(s)
    count, obj, span = 1, None, None
    for n, s in zip(reversed(a.shape[:nb]), reversed(a.strides[:nb])):
        count *= n
        if n == 1:
            continue
        if obj is None:
            obj = s
        elif s != span:
            return None
        span = s * n
    if obj is None:
        obj = max(item, item * math.prod(a.shape[nb:]))
    if count and (not _stride_ok(obj, item) or count > _INT_MAX):
        return None
    return count, obj, tuple(strides)


class _Op:
    """One operand as the library sees it: the array (the caller's own, or a
    contiguous copy when its memory cannot be described), pointer and strides."""

    __slots__ = ("a", "count", "obj", "strides", "ptr")

    def __init__(self, a, core, ctype):
        d = _describe(a, core)
        if d is None:
            a = np.array(a, order="C", copy=True)
            d = _describe(a, core)
            if d is None:
                raise ValueError("kelm: array too large for 32-bit strides and counts")
        self.a = a
        self.count, self.obj, self.strides = d
        self.ptr = ffi.cast(ctype, _address(a))

    def col(self, j, ctype):
        """Pointer to column j of every matrix (used as a stack of vectors)."""
        return ffi.cast(ctype, _address(self.a) + j * self.a.strides[-1])


def _same_view(a, b):
    return (_address(a) == _address(b) and a.shape == b.shape and a.strides == b.strides)


class _Out:
    """The destination: the caller's ``out`` when the library can write it in
    place, else a fresh array (copied into ``out`` by ``result``)."""

    def __init__(self, fname, out, shape, dtype, core, inputs=(), inplace=False, flat=False):
        shape = tuple(shape)
        self.out = out
        if out is not None:
            if not isinstance(out, np.ndarray):
                raise TypeError("kelm.%s: out must be a numpy array" % fname)
            if out.dtype != dtype:
                raise TypeError("kelm.%s: out has dtype %s, expected %s" % (fname, out.dtype, np.dtype(dtype)))
            if out.shape != shape:
                raise ValueError("kelm.%s: out has shape %s, expected %s" % (fname, out.shape, shape))
            if not out.flags.writeable:
                raise ValueError("kelm.%s: out is read-only" % fname)
        self.shape, self.dtype, self.core = shape, np.dtype(dtype), core
        self.inputs, self.inplace, self.flat = inputs, inplace, flat
        self.target = None

    def usable(self, a):
        """Can the library write straight into ``a``?"""
        if self.flat:
            if not a.flags.c_contiguous or _address(a) % a.itemsize:
                return False
        elif _describe(a, self.core) is None:
            return False
        for x in self.inputs:
            if np.may_share_memory(a, x) and not (self.inplace and _same_view(a, x)):
                return False
        return True

    def op(self, ctype):
        if self.out is not None and self.usable(self.out):
            self.target = self.out
        else:
            self.target = np.empty(self.shape, self.dtype)
        return _Op(self.target, self.core, ctype)

    def result(self):
        if self.target is None:  # nothing to compute (an empty stack)
            self.target = self.out if self.out is not None else np.empty(self.shape, self.dtype)
        if self.out is not None and self.target is not self.out:
            np.copyto(self.out, self.target)
            return self.out
        return self.out if self.out is not None else self.target


def _types(a):
    return _SUFFIX[a.dtype]


def _fn(name):
    return getattr(lib, name)


def _scalar(r):
    return r[()] if r.ndim == 0 else r


def _matrix_shape(fname, a, square=True):
    if a.ndim < 2:
        raise ValueError("kelm.%s: matrices (..., m, n) expected, got shape %s" % (fname, a.shape))
    m, n = a.shape[-2:]
    if square and m != n:
        raise ValueError("kelm.%s: square matrices expected, got shape %s" % (fname, a.shape))
    if m < 1 or n < 1:
        raise ValueError("kelm.%s: matrices of at least 1x1 expected, got shape %s" % (fname, a.shape))
    return m, n


def _vector_shape(fname, a, length=None):
    if a.ndim < 1 or a.shape[-1] < 1:
        raise ValueError("kelm.%s: vectors (..., n) with n >= 1 expected, got shape %s" % (fname, a.shape))
    if length is not None and a.shape[-1] != length:
        raise ValueError("kelm.%s: vectors of length %d expected, got shape %s" % (fname, length, a.shape))
    return a.shape[-1]


def _broadcast(fname, a, ca, b, cb):
    """Broadcasts the batch axes of a and b; returns them and the batch shape."""
    ba, bb = a.shape[:a.ndim - ca], b.shape[:b.ndim - cb]
    try:
        batch = np.broadcast_shapes(ba, bb)
    except ValueError:
        raise ValueError("kelm.%s: batch shapes %s and %s do not broadcast" % (fname, ba, bb)) from None
    if ba != batch:
        a = np.broadcast_to(a, batch + a.shape[a.ndim - ca:])
    if bb != batch:
        b = np.broadcast_to(b, batch + b.shape[b.ndim - cb:])
    return a, b, batch


# --- element-wise ----------------------------------------------------------------------------

def _addsub(fname, op, a, b, out):
    a, b = _floats(fname, a, b)
    if a.ndim < 1 or b.ndim < 1:
        raise ValueError("kelm.%s: arrays of at least one dimension expected" % fname)
    try:
        shape = np.broadcast_shapes(a.shape, b.shape)
    except ValueError:
        raise ValueError("kelm.%s: shapes %s and %s do not broadcast" % (fname, a.shape, b.shape)) from None
    if 0 in shape[-2:]:
        raise ValueError("kelm.%s: empty vectors or matrices" % fname)
    a, b = np.broadcast_to(a, shape), np.broadcast_to(b, shape)
    core = 1 if len(shape) == 1 else 2
    dst = _Out(fname, out, shape, a.dtype, core, (a, b), inplace=True)
    if math.prod(shape) == 0:
        return dst.result()
    t, ct = _types(a)
    x, y, d = _Op(a, core, ct), _Op(b, core, ct), dst.op(ct)
    if core == 1:
        name = "kelm%s_vava_%s" % (op, t)
        st = _fn(name)(x.ptr, x.obj, x.strides[0], y.ptr, y.obj, y.strides[0],
                       d.ptr, d.obj, d.strides[0], shape[-1], 1)
    else:
        name = "kelm%s_mama_%s" % (op, t)
        st = _fn(name)(x.ptr, x.obj, *x.strides, y.ptr, y.obj, *y.strides, d.ptr, d.obj, *d.strides,
                       shape[-1], shape[-2], x.count)
    check(st, name, fname)
    return dst.result()


def add(a, b, out=None):
    """Element-wise sum of two stacks of matrices (..., m, n) or of two
    vectors (n,), batch axes broadcasting.  ``out`` may be ``a`` or ``b``."""
    return _addsub("add", "Add", a, b, out)


def subtract(a, b, out=None):
    """Element-wise difference ``a - b``; shapes as in :func:`add`."""
    return _addsub("subtract", "Sub", a, b, out)


# --- products --------------------------------------------------------------------------------

def _mul_mm(fname, a, b, out):
    n, k = _matrix_shape(fname, a, square=False)
    k2, m = _matrix_shape(fname, b, square=False)
    if k != k2:
        raise ValueError("kelm.%s: inner sizes differ: %s @ %s" % (fname, a.shape, b.shape))
    sa, sb = a.shape[:-2], b.shape[:-2]
    t, ct = _types(a)
    if sa and not sb:      # stack @ one matrix
        batch, form = sa, "mam"
    elif sb and not sa:    # one matrix @ stack
        batch, form = sb, "mma"
    else:
        a, b, batch = _broadcast(fname, a, 2, b, 2)
        form = "mama"
    dst = _Out(fname, out, batch + (n, m), a.dtype, 2, (a, b))
    if 0 in batch:
        return dst.result()
    x, y, d = _Op(a, 2, ct), _Op(b, 2, ct), dst.op(ct)
    name = "kelmMul_%s_%s" % (form, t)
    xa = (x.ptr, x.obj) if form != "mma" else (x.ptr,)
    ya = (y.ptr, y.obj) if form != "mam" else (y.ptr,)
    count = x.count if form != "mma" else y.count
    st = _fn(name)(*xa, *x.strides, k, n, *ya, *y.strides, m, k, d.ptr, d.obj, *d.strides, count)
    check(st, name, fname)
    return dst.result()


def _mul_mv(fname, a, v, out, transposed=False):
    """(..., h, w) matrices times (..., w) vectors; with ``transposed`` the
    matrices are used transposed (strides swapped, no copy)."""
    h, w = _matrix_shape(fname, a, square=False)
    if transposed:
        a = np.swapaxes(a, -1, -2)
        h, w = w, h
    _vector_shape(fname, v, w)
    sa, sv = a.shape[:-2], v.shape[:-1]
    t, ct = _types(a)
    if sa and not sv:
        batch, form = sa, "mav"
    elif sv and not sa:
        batch, form = sv, "mva"
    else:
        a, v, batch = _broadcast(fname, a, 2, v, 1)
        form = "mava"
    dst = _Out(fname, out, batch + (h,), a.dtype, 1, (a, v))
    if 0 in batch:
        return dst.result()
    x, y, d = _Op(a, 2, ct), _Op(v, 1, ct), dst.op(ct)
    name = "kelmMul_%s_%s" % (form, t)
    xa = (x.ptr, x.obj) if form != "mva" else (x.ptr,)
    ya = (y.ptr, y.obj) if form != "mav" else (y.ptr,)
    count = x.count if form != "mva" else y.count
    st = _fn(name)(*xa, *x.strides, w, h, *ya, *y.strides, w, d.ptr, d.obj, d.strides[0], count)
    check(st, name, fname)
    return dst.result()


def matmul(a, b, out=None):
    """Matrix product with numpy.matmul's shapes: (..., n, k) @ (..., k, m),
    a 1-D ``b`` is a vector (result (..., n)), a 1-D ``a`` a row vector
    (result (..., m)); batch axes broadcast.  For stacks of vectors
    (..., k) use :func:`matvec`.  Each element is the sum of its products in
    ascending order, in the element type (no wider accumulator, no fused
    multiply-add).  A single matrix or vector against a stack is not copied."""
    a, b = _floats("matmul", a, b)
    if a.ndim == 0 or b.ndim == 0:
        raise ValueError("kelm.matmul: scalar operands are not allowed")
    if a.ndim == 1 and b.ndim == 1:
        return dot(a, b, out=out)
    if b.ndim == 1:
        return _mul_mv("matmul", a, b, out)
    if a.ndim == 1:
        return _mul_mv("matmul", b, a, out, transposed=True)
    return _mul_mm("matmul", a, b, out)


def matvec(a, v, out=None):
    """Stacks of matrix-vector products: (..., n, k) matrices times (..., k)
    vectors gives (..., n), batch axes broadcasting."""
    a, v = _floats("matvec", a, v)
    return _mul_mv("matvec", a, v, out)


def transpose(a, out=None):
    """Transposes each matrix of a stack (..., m, n) into (..., n, m): the
    last two axes swapped (numpy's ``matrix_transpose``), elements moved as
    bit patterns.  ``out`` must not overlap ``a`` (it is then written through
    a temporary)."""
    (a,) = _floats("transpose", a)
    h, w = _matrix_shape("transpose", a, square=False)
    dst = _Out("transpose", out, a.shape[:-2] + (w, h), a.dtype, 2, (a,))
    if 0 in a.shape:
        return dst.result()
    t, ct = _types(a)
    x, d = _Op(a, 2, ct), dst.op(ct)
    name = "kelmTranspose_ma_" + t
    check(_fn(name)(x.ptr, x.obj, *x.strides, w, h, d.ptr, d.obj, *d.strides, x.count), name, "transpose")
    return dst.result()


def dot(a, b, out=None):
    """Dot products of stacks of vectors along the last axis (numpy's
    ``vecdot`` of real vectors): (..., n) and (..., n) give (...).  Products
    are summed in the element type from zero in ascending order; length 4 is
    summed as (p0 + p1) + (p2 + p3)."""
    a, b = _floats("dot", a, b)
    n = _vector_shape("dot", a)
    _vector_shape("dot", b, n)
    a, b, batch = _broadcast("dot", a, 1, b, 1)
    dst = _Out("dot", out, batch, a.dtype, 0, (a, b), flat=True)
    if 0 in batch:
        return dst.result()
    t, ct = _types(a)
    x, y, d = _Op(a, 1, ct), _Op(b, 1, ct), dst.op(ct)
    name = "kelmDotProduct_vava_" + t
    check(_fn(name)(x.ptr, x.obj, x.strides[0], y.ptr, y.obj, y.strides[0], d.ptr, n, x.count), name, "dot")
    return _scalar(dst.result())


vecdot = dot


def cross(a, b, out=None):
    """Cross products of stacks of 3-vectors (..., 3); each component is one
    difference of two rounded products (a1 b2 - a2 b1, ...)."""
    a, b = _floats("cross", a, b)
    _vector_shape("cross", a, 3)
    _vector_shape("cross", b, 3)
    a, b, batch = _broadcast("cross", a, 1, b, 1)
    dst = _Out("cross", out, batch + (3,), a.dtype, 1, (a, b))
    if 0 in batch:
        return dst.result()
    t, ct = _types(a)
    x, y, d = _Op(a, 1, ct), _Op(b, 1, ct), dst.op(ct)
    name = "kelmCrossProduct_vava_" + t
    check(_fn(name)(x.ptr, x.obj, x.strides[0], y.ptr, y.obj, y.strides[0], d.ptr, d.obj, d.strides[0],
                    x.count), name, "cross")
    return dst.result()


# --- reductions ------------------------------------------------------------------------------

def norm(x, ord=None, axis=-1, keepdims=False, out=None):
    """Euclidean norms of vectors (``axis`` an int, default the last axis) or
    Frobenius norms of matrices (``axis`` a pair such as ``(-2, -1)``), one
    per object of a stack.  Unlike numpy.linalg.norm, the default is the
    norm of each vector along the last axis, not of the flattened array.
    ``ord`` may be None or 2 for vectors, None or 'fro' for matrices.

    The squares are summed in the element type without scaling: float32
    vectors whose squares overflow have norm inf, whose squares underflow 0.
    Contiguous float32 vectors of length 3 to 6 take the square root from
    the processor's reciprocal-square-root estimate refined by one Newton
    step (within a few units in the last place)."""
    (x,) = _floats("norm", x)
    axes = (axis,) if isinstance(axis, (int, np.integer)) else tuple(axis)
    if len(axes) not in (1, 2):
        raise ValueError("kelm.norm: axis must be an int or a pair of ints")
    try:
        axes = tuple(np.core.multiarray.normalize_axis_index(int(ax), x.ndim) for ax in axes)
    except np.AxisError as exc:
        raise ValueError("kelm.norm: %s" % exc) from None
    if len(set(axes)) != len(axes):
        raise ValueError("kelm.norm: repeated axis")
    if (len(axes) == 1 and ord not in (None, 2)) or (len(axes) == 2 and ord not in (None, "fro")):
        raise ValueError("kelm.norm: ord=%r is not supported for %d axis(es)" % (ord, len(axes)))
    core = len(axes)
    xm = np.moveaxis(x, axes, tuple(range(-core, 0)))
    if 0 in xm.shape[xm.ndim - core:]:
        raise ValueError("kelm.norm: empty vectors or matrices")
    batch = xm.shape[:xm.ndim - core]
    shape = list(x.shape)
    for ax in axes:
        shape[ax] = 1
    kshape = tuple(shape)
    oshape = kshape if keepdims else batch
    dst = _Out("norm", out, oshape, x.dtype, 0, (x,), flat=True)
    if 0 in batch:
        return dst.result()
    t, ct = _types(x)
    s, d = _Op(xm, core, ct), dst.op(ct)
    if core == 1:
        name = "kelmL2Norm_va_" + t
        st = _fn(name)(s.ptr, s.obj, s.strides[0], d.ptr, xm.shape[-1], s.count)
    else:
        name = "kelmFrobNorm_ma_" + t
        st = _fn(name)(s.ptr, s.obj, *s.strides, xm.shape[-1], xm.shape[-2], d.ptr, s.count)
    check(st, name, "norm")
    return _scalar(dst.result())


def trace(a, out=None):
    """Traces of a stack of square matrices (..., n, n), over the last two
    axes (numpy.linalg.trace, not numpy.trace's first two).  The diagonal is
    summed in the element type: d0 + d1 + ... in order, except order 5,
    which adds the last diagonal element first (d4 + d0 + d1 + d2 + d3)."""
    (a,) = _floats("trace", a)
    n, _ = _matrix_shape("trace", a)
    batch = a.shape[:-2]
    dst = _Out("trace", out, batch, a.dtype, 0, (a,), flat=True)
    if 0 in batch:
        return dst.result()
    t, ct = _types(a)
    s, d = _Op(a, 2, ct), dst.op(ct)
    name = "kelmTrace_ma_" + t
    check(_fn(name)(s.ptr, s.obj, *s.strides, n, d.ptr, s.count), name, "trace")
    return _scalar(dst.result())


def det(a, out=None):
    """Determinants of a stack of square matrices (..., n, n).

    Orders 3 to 6 use the closed-form expansion along the first row computed
    in a wider precision (float32 in double, float64 in double-double) and
    rounded once, so the result is within one unit in the last place of the
    exact determinant of the stored matrix, even when minors cancel (numpy's
    LU-based value can be far off there).  Other orders eliminate with
    partial pivoting in the element type and give exactly 0 when a pivot
    falls below 2*n^3 times the smallest normal number.  Singular matrices
    give 0; nothing is raised for them."""
    (a,) = _floats("det", a)
    n, _ = _matrix_shape("det", a)
    batch = a.shape[:-2]
    dst = _Out("det", out, batch, a.dtype, 0, (a,), flat=True)
    if 0 in batch:
        return dst.result()
    t, ct = _types(a)
    s, d = _Op(a, 2, ct), dst.op(ct)
    buf = np.empty(n * (n + 1), a.dtype)
    name = "kelmDet_ma_" + t
    check(_fn(name)(s.ptr, s.obj, *s.strides, n, ffi.cast(ct, _address(buf)), d.ptr, s.count), name, "det")
    return _scalar(dst.result())


# --- inverse and linear systems --------------------------------------------------------------

def inv(a, out=None):
    """Inverses of a stack of square matrices (..., n, n).

    Orders 3 to 6 are closed-form adjugates divided by the determinant;
    orders 2 and 7 up build the adjugate from minors by pivoting
    elimination.  A matrix whose determinant is below tau = 2*n^3 times the
    smallest normal number raises numpy.linalg.LinAlgError
    (``kelErrSingular``); float64 orders 3 and 4 with contiguous rows use
    4*n^3 times it.  Nearly singular matrices above that bound are inverted
    (with large entries), as numpy does.  After that error the contents of
    ``out`` are unspecified (the library stops at the failing matrix, its
    other threads do not); without ``out`` nothing is returned."""
    (a,) = _floats("inv", a)
    return _inv("inv", a, out)


def _inv(fname, a, out):
    n, _ = _matrix_shape(fname, a)
    dst = _Out(fname, out, a.shape, a.dtype, 2, (a,))
    if 0 in a.shape[:-2]:
        return dst.result()
    t, ct = _types(a)
    s, d = _Op(a, 2, ct), dst.op(ct)
    buf = np.empty(n * (n + 1), a.dtype)
    name = "kelmInvert_ma_" + t
    check(_fn(name)(s.ptr, s.obj, *s.strides, ffi.cast(ct, _address(buf)), d.ptr, d.obj, *d.strides, n,
                    s.count), name, fname)
    return dst.result()


class LUFactor(namedtuple("LUFactor", "lu index")):
    """An LU factor as the library lays it out: P A = L U with partial
    pivoting and rows never exchanged.  ``index[..., k]`` is the row of A
    chosen as the k-th pivot, and row ``index[..., k]`` of ``lu`` holds row k
    of the factor: the multipliers of L (unit diagonal not stored) in
    columns j < k, U in columns j >= k.  ``L``, ``U`` and ``perm`` give the
    factors in the usual layout (A[perm] = L @ U)."""

    __slots__ = ()

    @property
    def perm(self):
        return self.index.astype(np.intp)

    def _rows(self):
        return np.take_along_axis(self.lu, self.perm[..., :, None], axis=-2)

    @property
    def L(self):
        r = self._rows()
        n = r.shape[-1]
        return np.tril(r, -1) + np.eye(n, dtype=r.dtype)

    @property
    def U(self):
        return np.triu(self._rows())


def _lu(fname, a):
    n, _ = _matrix_shape(fname, a)
    t, ct = _types(a)
    lu = np.empty(a.shape, a.dtype)
    index = np.empty(a.shape[:-1], np.intc)
    if 0 in a.shape[:-2]:
        return LUFactor(lu, index)
    d = _Op(lu, 2, ct)
    if 3 <= n <= 6:
        s = _Op(a, 2, ct)
    else:
        # Outside the written-out orders, a strided source would send every
        # matrix's permutation to one index block: factor a contiguous copy in place.
        np.copyto(lu, a)
        s = d
    name = "kelmLUDecomp_ma_" + t
    check(_fn(name)(s.ptr, s.obj, *s.strides, ffi.cast("int *", _address(index)), d.ptr, d.obj, *d.strides,
                    n, d.count), name, fname)
    return LUFactor(lu, index)


def lu_factor(a):
    """LU decomposition with partial pivoting of a stack of square matrices
    (..., n, n); returns an :class:`LUFactor` (lu, index) for
    :func:`lu_solve` (scipy.linalg's pair of names, the library's layout:
    see LUFactor).  A pivot below the library's bound raises
    numpy.linalg.LinAlgError: orders 3 to 6 accept any pivot of at least
    twice the smallest normal number, other orders need a pivot above the
    machine epsilon (an absolute test: a well-conditioned matrix of tiny
    scale is refused at those orders)."""
    (a,) = _floats("lu_factor", a)
    return _lu("lu_factor", a)


def _rhs(fname, a_batch, n, b):
    """Right-hand sides: a stack of vectors when b.ndim is one less than the
    matrices' ndim (or b is 1-D), else a stack of (n, k) matrices."""
    if b.ndim == len(a_batch) + 1 or b.ndim == 1:
        _vector_shape(fname, b, n)
        return True
    if b.ndim < 2 or b.shape[-2] != n:
        raise ValueError("kelm.%s: right-hand sides (..., %d) or (..., %d, k) expected, got %s"
                         % (fname, n, n, b.shape))
    return False


def _backsubst(fname, op, factor, index, b, out):
    """Runs op's mava back substitution for every right-hand side column."""
    n = factor.shape[-1]
    vec = _rhs(fname, factor.shape[:-2], n, b)
    core = 1 if vec else 2
    batch = np.broadcast_shapes(factor.shape[:-2], b.shape[:b.ndim - core])
    if factor.shape[:-2] != batch:
        factor = np.broadcast_to(factor, batch + factor.shape[-2:])
        if index is not None:
            index = np.broadcast_to(index, batch + index.shape[-1:])
    if b.shape[:b.ndim - core] != batch:
        b = np.broadcast_to(b, batch + b.shape[b.ndim - core:])
    dst = _Out(fname, out, b.shape, b.dtype, core, (b,))
    if 0 in batch or 0 in b.shape[-1:]:
        return dst.result()
    t, ct = _types(b)
    f = _Op(factor, 2, ct)
    y, d = _Op(b, core, ct), dst.op(ct)
    name = "kelm%s_mava_%s" % (op, t)
    fn = _fn(name)
    pre = (f.ptr, f.obj) + f.strides
    if index is not None:
        index = np.ascontiguousarray(index, np.intc)
        pre += (ffi.cast("int *", _address(index)),)
    if vec:
        check(fn(*pre, y.ptr, y.obj, y.strides[0], d.ptr, d.obj, d.strides[0], n, f.count), name, fname)
    else:
        for j in range(b.shape[-1]):
            check(fn(*pre, y.col(j, ct), y.obj, y.strides[0], d.col(j, ct), d.obj, d.strides[0], n, f.count),
                  name, fname)
    return dst.result()


def lu_solve(lu_and_index, b, out=None):
    """Solves A x = b with the factor of :func:`lu_factor`.  ``b`` is a stack
    of vectors (..., n) (or a single vector) or of matrices (..., n, k).
    The factor is not tested: a zero on U's diagonal gives infinities or
    NaNs."""
    lu, index = lu_and_index
    lu, b = _floats("lu_solve", lu, b)
    _matrix_shape("lu_solve", lu)
    index = np.asarray(index)
    if index.shape != lu.shape[:-1] or index.dtype.kind not in "iu":
        raise ValueError("kelm.lu_solve: index of shape %s and an integer type expected" % (lu.shape[:-1],))
    if index.size and (index.min() < 0 or index.max() >= lu.shape[-1]):
        raise ValueError("kelm.lu_solve: index entries must lie in 0 .. n-1")
    return _backsubst("lu_solve", "LUBackSubst", lu, index, b, out)


def solve(a, b, out=None):
    """Solves A x = b for a stack of square matrices (..., n, n); ``b`` is a
    stack of vectors (..., n) (numpy 1.x's rule: b.ndim == a.ndim - 1, or b
    1-D) or of matrices (..., n, k).

    x is the inverse of A (:func:`inv`) times b, block by block.  The
    inverse's singular test is reliable where the LU decomposition's is
    not: orders 3 to 6 compare a determinant computed in wider precision
    and rounded once, so an exactly singular matrix raises
    numpy.linalg.LinAlgError (numpy would return huge values), while the LU
    test there only catches pivots below twice the smallest normal number,
    and at other orders refuses any pivot below the machine epsilon, which
    turns well-conditioned matrices of small scale away.  The price is the
    determinant's absolute bound: a matrix whose determinant is below
    2*n^3 times the smallest normal number counts as singular (float32
    4x4 matrices with entries near 1e-9, float64 near 1e-77).  For the LU
    route use :func:`lu_factor` and :func:`lu_solve`."""
    a, b = _floats("solve", a, b)
    n, _ = _matrix_shape("solve", a)
    vec = _rhs("solve", a.shape[:-2], n, b)
    core = 1 if vec else 2
    a, b, batch = _broadcast("solve", a, 2, b, core)
    dst = _Out("solve", out, b.shape, b.dtype, core, (a, b))
    if 0 in b.shape:
        return dst.result()
    # Blocks of objects small enough for the cache: each block's inverses are
    # written to scratch memory and read back at once by the product.
    t, ct = _types(a)
    x, y, d = _Op(a, 2, ct), _Op(b, core, ct), dst.op(ct)
    item = a.itemsize
    block = min(x.count, max(256, _BLOCK_BYTES // (n * n * item)))
    ai = _Op(np.empty((block, n, n), a.dtype), 2, ct)
    scratch = np.empty(n * (n + 1), a.dtype)
    buf = ffi.cast(ct, _address(scratch))
    iname = "kelmInvert_ma_" + t
    mname = ("kelmMul_mava_" if vec else "kelmMul_mama_") + t
    inv_, mul = _fn(iname), _fn(mname)
    k = 1 if vec else b.shape[-1]
    for start in range(0, x.count, block):
        cnt = min(block, x.count - start)
        src = ffi.cast(ct, _address(x.a) + start * x.obj)
        check(inv_(src, x.obj, *x.strides, buf, ai.ptr, ai.obj, *ai.strides, n, cnt), iname, "solve")
        yp = ffi.cast(ct, _address(y.a) + start * y.obj)
        dp = ffi.cast(ct, _address(d.a) + start * d.obj)
        if vec:
            st = mul(ai.ptr, ai.obj, *ai.strides, n, n, yp, y.obj, y.strides[0], n, dp, d.obj, d.strides[0], cnt)
        else:
            st = mul(ai.ptr, ai.obj, *ai.strides, n, n, yp, y.obj, *y.strides, k, n, dp, d.obj, *d.strides, cnt)
        check(st, mname, "solve")
    return dst.result()


class CholeskyFactor(tuple):
    """(c, lower) as scipy.linalg.cho_factor returns it: ``c`` holds the
    factor (L when ``lower``, else U = L^T) with zeros in the other triangle.

    The library stores the reciprocals 1/l_ii on the diagonal of its factor;
    this object keeps that factor for :func:`cho_solve` and shows the true
    diagonal in ``c`` (1/stored value)."""

    def __new__(cls, c, lower, factor):
        self = super().__new__(cls, (c, lower))
        self._factor = factor
        return self

    c = property(lambda self: self[0])
    lower = property(lambda self: self[1])


def cho_factor(a, lower=False):
    """Cholesky decomposition A = L L^T of a stack of symmetric positive
    definite matrices (..., n, n); returns a :class:`CholeskyFactor`
    (c, lower) for :func:`cho_solve`.  Only the lower triangle of ``a`` is
    read.  A diagonal value that is not > 0 raises numpy.linalg.LinAlgError
    (``kelErrNotPosDef``).  Contiguous float32 stacks of order 3 to 6 take
    the processor's reciprocal-square-root estimate refined by one Newton
    step (last bits may differ between processor makers)."""
    (a,) = _floats("cho_factor", a)
    n, _ = _matrix_shape("cho_factor", a)
    factor = np.zeros(a.shape, a.dtype)
    if 0 not in a.shape[:-2]:
        t, ct = _types(a)
        s, d = _Op(a, 2, ct), _Op(factor, 2, ct)
        name = "kelmCholeskyDecomp_ma_" + t
        check(_fn(name)(s.ptr, s.obj, *s.strides, d.ptr, d.obj, *d.strides, n, s.count), name, "cho_factor")
    c = factor.copy()
    diag = np.einsum("...ii->...i", c)
    np.reciprocal(diag, out=diag)
    if not lower:
        c = np.ascontiguousarray(np.swapaxes(c, -1, -2))
    return CholeskyFactor(c, bool(lower), factor)


def cho_solve(c_and_lower, b, out=None):
    """Solves A x = b with the factor of :func:`cho_factor` (or any
    (c, lower) pair in scipy's layout, whose diagonal is then inverted for
    the library).  ``b`` as in :func:`solve`.  The factor is not tested."""
    factor = getattr(c_and_lower, "_factor", None)
    c, lower = c_and_lower
    if factor is None:
        (c,) = _floats("cho_solve", c)
        _matrix_shape("cho_solve", c)
        lo = c if lower else np.swapaxes(c, -1, -2)
        factor = np.tril(lo)
        diag = np.einsum("...ii->...i", factor)
        with np.errstate(divide="ignore"):
            np.reciprocal(diag, out=diag)
    factor, b = _floats("cho_solve", factor, b)
    return _backsubst("cho_solve", "CholeskyBackSubst", factor, None, b, out)


def qr(a, mode="reduced"):
    """QR decomposition of a stack of (..., m, n) matrices with m >= n by
    Householder reflections: ``mode`` 'reduced' gives Q (..., m, n) and
    R (..., n, n), 'complete' Q (..., m, m) and R (..., m, n), 'r' only R.
    R's diagonal carries the signs the reflections give (numpy's may differ).
    A column whose squared norm (not its norm) falls below the machine
    epsilon during the reduction raises numpy.linalg.LinAlgError
    (``kelErrTinyDivisor``): an absolute test, so matrices of tiny scale
    are refused.  Wide matrices (m < n) raise ValueError."""
    (a,) = _floats("qr", a)
    m, n = _matrix_shape("qr", a, square=False)
    if m < n:
        raise ValueError("kelm.qr: matrices with at least as many rows as columns expected, got %s"
                         % (a.shape,))
    if mode not in ("reduced", "complete", "r"):
        raise ValueError("kelm.qr: mode must be 'reduced', 'complete' or 'r'")
    f = np.empty(a.shape, a.dtype)
    batch = a.shape[:-2]
    if 0 not in batch:
        t, ct = _types(a)
        s, d = _Op(a, 2, ct), _Op(f, 2, ct)
        buf = np.empty(m, a.dtype)
        name = "kelmQRDecomp_ma_" + t
        check(_fn(name)(s.ptr, s.obj, *s.strides, ffi.cast(ct, _address(buf)), d.ptr, d.obj, *d.strides,
                        n, m, s.count), name, "qr")
    k = m if mode == "complete" else n
    r = np.triu(f[..., :k, :])
    if mode == "r":
        return r
    # Q = H_0 H_1 ... applied to the first k columns of the identity, last reflection first.
    q = np.zeros(batch + (m, k), a.dtype)
    idx = np.arange(k)
    q[..., idx, idx] = 1
    reflections = n - 1 if m == n else n
    for j in reversed(range(reflections)):
        v = np.zeros(batch + (m,), a.dtype)
        v[..., j] = 1
        v[..., j + 1:] = f[..., j + 1:, j]
        beta = -2 / (1 + np.sum(v[..., j + 1:] ** 2, axis=-1))
        w = np.einsum("...i,...ik->...k", v, q)
        q += (beta[..., None] * v)[..., :, None] * w[..., None, :]
    return QRResult(q, r)


# --- eigenproblems ---------------------------------------------------------------------------

_SENTINEL = {np.dtype(np.float32): np.uint32(0x7FC04B4D), np.dtype(np.float64): np.uint64(0x7FF84B454C4D2121)}
_UINT = {np.dtype(np.float32): np.uint32, np.dtype(np.float64): np.uint64}


def _sym_run(fname, fn, name, s, objects, start, cnt, w, v, buf):
    """Objects start .. start+cnt-1 of the stack ``s`` into w[:cnt] (and
    v[:cnt]), in the library's order.  A matrix the library reports singular
    still has its results (orders 3 up); the run resumes after it.  An
    order-2 matrix reported singular gets no results from the library and is
    solved by numpy.linalg for that one object.  Returns whether any matrix
    was reported singular."""
    n = w.shape[-1]
    dtype = w.dtype
    item, ct = dtype.itemsize, _types(w)[1]
    bits = w.view(_UINT[dtype])
    bp = ffi.cast(ct, _address(buf))
    pending = [(0, cnt)]
    first = True
    singular = False
    while pending:
        lo, c = pending.pop()
        src = ffi.cast(ct, _address(s.a) + (start + lo) * s.obj)
        wp = ffi.cast(ct, _address(w) + lo * n * item)
        if v is not None:
            vp = ffi.cast(ct, _address(v) + lo * n * n * item)
            st = fn(src, s.obj, *s.strides, bp, vp, n * n * item, n * item, item, wp, n, c)
        else:
            st = fn(src, s.obj, *s.strides, bp, wp, n, c)
        if st == 0:
            continue
        if st != _SINGULAR:
            check(st, name, fname)
        singular = True
        if first:
            # Which objects did the call reach?  Mark them all unwritten and run again.
            first = False
            bits[lo:lo + c] = _SENTINEL[dtype]
            pending.append((lo, c))
            continue
        untouched = np.all(bits[lo:lo + c] == _SENTINEL[dtype], axis=-1)
        if untouched[0]:  # the first object ran and wrote nothing: an order-2 singular matrix
            m = np.array(objects[start + lo])
            if v is not None:
                w[lo], v[lo] = np.linalg.eigh(m)
            else:
                w[lo] = np.linalg.eigvalsh(m)
            untouched[0] = False
        # resume every run of objects the call did not reach
        edges = np.flatnonzero(np.diff(np.concatenate(([0], untouched.astype(np.int8), [0]))))
        for a, b in zip(edges[::2], edges[1::2]):
            pending.append((lo + int(a), int(b - a)))
    return singular


def _flat(x, shape):
    """``x`` reshaped without a copy, or None."""
    y = x.view()
    try:
        y.shape = shape
    except AttributeError:
        return None
    return y


def _sym(fname, a, vectors, w, v):
    """Eigenvalues ascending (and eigenvectors with them) of a stack into w
    (and v), in blocks small enough for the cache: the library writes a
    block into scratch memory and the block is reordered from there into
    the results."""
    n = a.shape[-1]
    count = math.prod(a.shape[:-2])
    if count == 0:
        return
    wf, vf = _flat(w, (count, n)), (_flat(v, (count, n, n)) if vectors else None)
    if wf is None or (vectors and vf is None):  # results in a layout numpy cannot flatten
        _sym(fname, a, vectors, np.empty(w.shape, w.dtype), np.empty(v.shape, v.dtype) if vectors else None)
        return
    w, v = wf, vf
    t, ct = _types(a)
    s = _Op(a, 2, ct)
    objects = np.lib.stride_tricks.as_strided(s.a, (count, n, n), (s.obj,) + s.strides, writeable=False)
    name = ("kelmEigenValuesVectorsSym_ma_" if vectors else "kelmEigenValuesSym_ma_") + t
    fn = _fn(name)
    block = min(count, max(1024, _BLOCK_BYTES // ((n * n + n) * a.itemsize)))
    ws = np.empty((block, n), a.dtype)
    vs = np.empty((block, n, n), a.dtype) if vectors else None
    buf = np.empty(n * n, a.dtype)
    for start in range(0, count, block):
        cnt = min(block, count - start)
        singular = _sym_run(fname, fn, name, s, objects, start, cnt, ws, vs, buf)
        wb, vb = ws[:cnt], (vs[:cnt] if vectors else None)
        # From order 3 the values come descending, except the values-only
        # operation's for a matrix reported singular; order 2 has its own order.
        descending = n >= 3 and (vectors or not singular)
        if descending or (n > 1 and np.all(wb[:, :-1] >= wb[:, 1:])):
            w[start:start + cnt] = wb[:, ::-1]
            if vectors:
                for j in range(n):  # column by column: faster than one reversed copy
                    v[start:start + cnt, :, j] = vb[:, :, n - 1 - j]
        else:
            order = np.argsort(wb, axis=-1, kind="stable")
            w[start:start + cnt] = np.take_along_axis(wb, order, -1)
            if vectors:
                v[start:start + cnt] = np.take_along_axis(vb, order[:, None, :], -1)


def eigh(a, out=None):
    """Eigenvalues (ascending) and orthonormal eigenvectors (columns) of a
    stack of real symmetric matrices (..., n, n), numpy.linalg.eigh's
    conventions except that the whole matrix is read: it must be symmetric
    (numpy reads one triangle).  ``out`` may be a pair of arrays
    (eigenvalues, eigenvectors) of any layout; they must not overlap ``a``.

    The library reports a matrix whose eigenvalues' product is at most the
    machine epsilon as singular but still computes its results (orders 3
    up); this layer takes those results and carries on with the stack.
    Order-2 matrices with |a00 a11 - a01^2| <= epsilon get no results from
    the library and are solved by numpy.linalg.eigh.  An iteration that does
    not converge raises numpy.linalg.LinAlgError (``kelErrNotConverged``)."""
    (a,) = _floats("eigh", a)
    _matrix_shape("eigh", a)
    if out is None:
        out = (None, None)
    if not isinstance(out, tuple) or len(out) != 2:
        raise TypeError("kelm.eigh: out must be a pair (eigenvalues, eigenvectors)")
    w = _Out("eigh", out[0], a.shape[:-1], a.dtype, 1, (a,))
    v = _Out("eigh", out[1], a.shape, a.dtype, 2, (a,))
    wo, vo = out
    if (any(o is not None and np.may_share_memory(o, a) for o in out)
            or (wo is not None and vo is not None and np.may_share_memory(wo, vo))):
        raise ValueError("kelm.eigh: out overlaps the matrices or the other output")
    w, v = w.result(), v.result()  # the caller's arrays or fresh ones: written block by block
    _sym("eigh", a, True, w, v)
    return EighResult(w, v)


def eigvalsh(a, out=None):
    """Eigenvalues (ascending) of a stack of real symmetric matrices; see
    :func:`eigh` for the library's singular and convergence rules."""
    (a,) = _floats("eigvalsh", a)
    _matrix_shape("eigvalsh", a)
    w = _Out("eigvalsh", out, a.shape[:-1], a.dtype, 1, (a,)).result()
    if out is not None and np.may_share_memory(out, a):
        raise ValueError("kelm.eigvalsh: out overlaps the matrices")
    _sym("eigvalsh", a, False, w, None)
    return w


def _bufsize(n, dtype, vectors):
    t = _SUFFIX[np.dtype(dtype)][0]
    name = "kelmEigenValues%sGetBufSize_%s" % ("Vectors" if vectors else "", t)
    nbytes = ffi.new("int *")
    check(_fn(name)(n, nbytes), name)
    return np.empty(nbytes[0] // np.dtype(dtype).itemsize + 1, dtype)


def _complex_values(re, im):
    if not np.any(im):
        return re
    return re + 1j * im.astype(_COMPLEX[re.dtype])


def eig(a):
    """Eigenvalues and right eigenvectors (unit columns) of a stack of
    general real matrices (..., n, n), numpy.linalg.eig's conventions:
    complex results when any eigenvalue of the stack is complex, else real.
    The eigenvalues are not sorted (the order the QR iteration finds them;
    a complex pair adjacent, positive imaginary part first).  A 2x2 block
    with equal diagonal elements is taken as a complex pair
    a +- i sqrt(|b|) sqrt(|c|) whatever the signs of b and c (so [[1, 2],
    [3, 1]] gives 1 +- i sqrt(6)).  An iteration that uses up its budget
    raises numpy.linalg.LinAlgError (``kelErrNotConverged``); so does an
    eigenvector block without a usable pivot (``kelErrEigenSolve``)."""
    (a,) = _floats("eig", a)
    n, _ = _matrix_shape("eig", a)
    batch = a.shape[:-2]
    count = math.prod(batch)
    re = np.empty((count, n), a.dtype)
    im = np.empty((count, n), a.dtype)
    vec = np.empty((count, n, n), a.dtype)
    if count:
        t, ct = _types(a)
        s = _Op(a, 2, ct)
        buf = _bufsize(n, a.dtype, True)
        vd = _Op(vec, 2, ct)
        name = "kelmEigenValuesVectorsRight_ma_" + t
        check(_fn(name)(s.ptr, s.obj, *s.strides, vd.ptr, vd.obj, *vd.strides, ffi.cast(ct, _address(re)),
                        ffi.cast(ct, _address(im)), n, count, ffi.cast(ct, _address(buf))), name, "eig")
    w = _complex_values(re, im)
    if w is not re:
        first = (im > 0)[:, None, :]
        second = (im < 0)[:, None, :]
        nxt = np.roll(vec, -1, axis=-1)
        prv = np.roll(vec, 1, axis=-1)
        vec = np.where(first, vec + 1j * nxt, np.where(second, prv - 1j * vec, vec + 0j))
        vec = vec.astype(_COMPLEX[a.dtype])
    return EigResult(w.reshape(batch + (n,)), vec.reshape(batch + (n, n)))


def eigvals(a):
    """Eigenvalues of a stack of general real matrices (see :func:`eig`)."""
    (a,) = _floats("eigvals", a)
    n, _ = _matrix_shape("eigvals", a)
    batch = a.shape[:-2]
    count = math.prod(batch)
    re = np.empty((count, n), a.dtype)
    im = np.empty((count, n), a.dtype)
    if count:
        t, ct = _types(a)
        s = _Op(a, 2, ct)
        buf = _bufsize(n, a.dtype, False)
        name = "kelmEigenValues_ma_" + t
        check(_fn(name)(s.ptr, s.obj, *s.strides, ffi.cast(ct, _address(re)), ffi.cast(ct, _address(im)),
                        n, count, ffi.cast(ct, _address(buf))), name, "eigvals")
    return _complex_values(re, im).reshape(batch + (n,))


# --- threads and identification --------------------------------------------------------------

def set_num_threads(n):
    """Sets the number of threads of array operations (values below 1 count
    as 1); returns the count now in force."""
    return _raw.core.kelSetNumThreads(int(n))


def get_num_threads():
    """The number of threads array operations request."""
    return _raw.core.kelGetNumThreads()


def library_version():
    """The library's identification record as a dict."""
    v = lib.kelmGetLibVersion()
    return {"versionMajor": v.versionMajor, "versionMinor": v.versionMinor, "buildMajor": v.buildMajor,
            "buildNumber": v.buildNumber, "cpuTag": ffi.string(v.cpuTag).decode(),
            "libName": ffi.string(v.libName).decode(), "versionText": ffi.string(v.versionText).decode(),
            "buildDate": ffi.string(v.buildDate).decode(), "path": _raw.library_path}
