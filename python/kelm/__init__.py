"""kelm: batched linear algebra on stacks of small matrices and vectors.

The functions take NumPy arrays of shape (..., n, n) or (..., n), float32 or
float64, with any positive strides, and hand them to the C library as
strided descriptions without copying.  ``kelm.raw`` is the C interface
itself (cffi, declarations read from the library's header); ``kelm.dask``
applies the functions blockwise to dask arrays.
"""

from ._errors import KelmError, KelmLinAlgError
from ._core import (
    add, subtract, matmul, matvec, transpose, dot, vecdot, cross, norm, trace, det, inv, solve,
    lu_factor, lu_solve, LUFactor, cho_factor, cho_solve, CholeskyFactor, qr, QRResult,
    eigh, eigvalsh, EighResult, eig, eigvals, EigResult,
    set_num_threads, get_num_threads, library_version,
)
from . import raw

__all__ = [
    "add", "subtract", "matmul", "matvec", "transpose", "dot", "vecdot", "cross", "norm", "trace",
    "det", "inv", "solve", "lu_factor", "lu_solve", "LUFactor", "cho_factor", "cho_solve",
    "CholeskyFactor", "qr", "QRResult", "eigh", "eigvalsh", "EighResult", "eig", "eigvals",
    "EigResult", "set_num_threads", "get_num_threads", "library_version", "KelmError",
    "KelmLinAlgError", "raw",
]
