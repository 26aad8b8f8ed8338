"""Exceptions raised for a non-zero status of the library."""

import numpy as np

from . import raw as _raw

# Statuses that describe the data (a singular matrix, a failed iteration)
# rather than the call; they raise numpy.linalg.LinAlgError as numpy does.
_NUMERIC = {"kelErrSingular", "kelErrNotPosDef", "kelErrNotConverged", "kelErrEigenSolve",
            "kelErrTinyDivisor", "kelErrFail"}


class KelmError(Exception):
    """A call of the library returned a non-zero status.

    ``status`` is the value, ``status_name`` the library's name of it
    (``"kelErrSingular"``), ``operation`` the C function that returned it and
    ``function`` the layer's function that called it (None for raw calls)."""

    def __init__(self, status, operation, function=None):
        self.status = status
        self.status_name = _raw.STATUS_NAMES.get(status, "unknown status")
        self.operation = operation
        self.function = function
        where = "%s (in kelm.%s)" % (operation, function) if function else operation
        super().__init__("%s returned %s (%d)" % (where, self.status_name, status))


class KelmLinAlgError(KelmError, np.linalg.LinAlgError):
    """A status about the data: singular, not positive definite, not converged."""


def error(status, operation, function=None):
    name = _raw.STATUS_NAMES.get(status)
    cls = KelmLinAlgError if name in _NUMERIC else KelmError
    return cls(status, operation, function)


def check(status, operation, function=None):
    """Raises the exception of a non-zero status."""
    if status:
        raise error(status, operation, function)
