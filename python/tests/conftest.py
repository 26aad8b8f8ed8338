import os
import sys

import numpy as np
import pytest

_here = os.path.dirname(os.path.abspath(__file__))
PACKAGE_DIR = os.path.dirname(_here)
sys.path.insert(0, PACKAGE_DIR)
if not os.environ.get("KELM_LIBRARY"):
    os.environ["KELM_LIBRARY"] = os.path.join(os.path.dirname(PACKAGE_DIR), "build-host", "libkelmv8.so.5.2")

import kelm  # noqa: E402

DTYPES = (np.float32, np.float64)
VIEWS = ("contiguous", "transposed", "sliced")


def eps(dtype):
    return float(np.finfo(dtype).eps)


def as_view(x, kind, core):
    """The same values as ``x`` in another memory layout, with no copy left
    between the view and its own storage: matrices stored column by column
    (transposed), or every other object and element of a larger array
    (sliced)."""
    if kind == "contiguous" or (x.ndim == 1 and kind == "transposed"):
        return x
    if x.ndim == 1:
        big = np.full(2 * len(x), np.nan, x.dtype)
        big[::2] = x
        return big[::2]
    if kind == "transposed":
        if core == 2:
            return np.ascontiguousarray(np.swapaxes(x, -1, -2)).swapaxes(-1, -2)
        return np.ascontiguousarray(np.moveaxis(x, -1, 0)).transpose(list(range(1, x.ndim)) + [0])
    big = np.full((2 * x.shape[0],) + x.shape[1:-1] + (2 * x.shape[-1],), np.nan, x.dtype)
    v = big[::2, ..., ::2]
    v[...] = x
    return v


@pytest.fixture
def rng():
    return np.random.default_rng(20240611)


@pytest.fixture
def threads():
    """Restores the library's thread count after the test."""
    before = kelm.get_num_threads()
    yield kelm.set_num_threads
    kelm.set_num_threads(before)
