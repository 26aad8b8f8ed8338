"""kelm's functions applied blockwise to dask arrays.

Stacks are chunked along their batch (object) axes only: the matrix and
vector axes of every operand are brought to one chunk (rechunked when
needed), and each block of objects is handed to the NumPy layer in one
call.  Worker processes import ``kelm`` themselves: they must find the
package and the library (set ``KELM_LIBRARY`` in the workers' environment,
``LocalCluster(env={"KELM_LIBRARY": ...})``)."""

import functools

import dask.array as da
import numpy as np

from . import _core

# name: gufunc signature (core axes of the operands -> of the results)
_SIGNATURES = {
    "add": "(m,n),(m,n)->(m,n)",
    "subtract": "(m,n),(m,n)->(m,n)",
    "matmul": "(n,k),(k,m)->(n,m)",
    "matvec": "(n,k),(k)->(n)",
    "transpose": "(m,n)->(n,m)",
    "dot": "(n),(n)->()",
    "cross": "(i),(i)->(i)",
    "trace": "(n,n)->()",
    "det": "(n,n)->()",
    "inv": "(n,n)->(n,n)",
    "solve": "(n,n),(n)->(n)",
    "eigvalsh": "(n,n)->(n)",
    "eigh": "(n,n)->(n),(n,n)",
    "eigvals": "(n,n)->(n)",
    "eig": "(n,n)->(n),(n,n)",
    "qr": "(m,n)->(m,n),(n,n)",
    "norm": "(n)->()",
}
_COMPLEX_OUT = {"eig", "eigvals"}


def _complex(dtype):
    return np.result_type(dtype, np.complex64)


def _eig(a):
    w, v = _core.eig(a)
    c = _complex(a.dtype)
    return w.astype(c, copy=False), v.astype(c, copy=False)


def _eigvals(a):
    return _core.eigvals(a).astype(_complex(a.dtype), copy=False)


def _qr(a):
    return tuple(_core.qr(a))


def _eigh(a):
    return tuple(_core.eigh(a))


_BLOCK = {"eig": _eig, "eigvals": _eigvals, "qr": _qr, "eigh": _eigh}


def apply(name, *arrays, signature=None, **kwargs):
    """Applies ``kelm.<name>`` blockwise to dask arrays shaped (..., core):
    a dask array, or a tuple of them for several results.  Keyword
    arguments go to the function (``signature`` must then describe its
    results, e.g. ``apply("norm", x, axis=(-2, -1), signature="(m,n)->()")``).
    Complex eigen results are always complex (NumPy's real-when-possible
    rule would differ from block to block)."""
    sig = signature or _SIGNATURES[name]
    func = _BLOCK.get(name, getattr(_core, name))
    if kwargs:
        func = functools.partial(func, **kwargs)
    arrays = [da.asarray(x) for x in arrays]
    dtype = np.result_type(*[x.dtype for x in arrays])
    nout = sig.split("->")[1].count("(")
    out_dtype = _complex(dtype) if name in _COMPLEX_OUT else dtype
    dtypes = [out_dtype] * nout if nout > 1 else out_dtype
    return da.apply_gufunc(func, sig, *arrays, output_dtypes=dtypes, allow_rechunk=True)


def _wrap(name):
    def f(*arrays):
        return apply(name, *arrays)
    f.__name__ = name
    f.__doc__ = "kelm.%s applied blockwise to dask arrays (signature %s)." % (name, _SIGNATURES[name])
    return f


for _name in _SIGNATURES:
    globals()[_name] = _wrap(_name)
del _name

__all__ = ["apply"] + list(_SIGNATURES)
