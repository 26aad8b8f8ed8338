"""kelm.dask on a local cluster of two worker processes: the results of
the single-process layer, bit for bit."""

import os

import numpy as np
import pytest

import kelm
from conftest import PACKAGE_DIR

da = pytest.importorskip("dask.array")
distributed = pytest.importorskip("distributed")
import kelm.dask as kd  # noqa: E402


@pytest.fixture(scope="module")
def client():
    env = {"KELM_LIBRARY": os.environ["KELM_LIBRARY"], "PYTHONPATH": PACKAGE_DIR}
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, env=env,
                                  dashboard_address=None) as cluster, distributed.Client(cluster) as c:
        yield c


def test_workers_load_the_library(client):
    paths = client.run(lambda: __import__("kelm").raw.library_path)
    assert len(paths) == 2 and set(paths.values()) == {kelm.raw.library_path}


@pytest.mark.parametrize("dtype", [np.float32, np.float64], ids=["32f", "64f"])
def test_blockwise_results_equal_single_process(client, dtype):
    rng = np.random.default_rng(7)
    a = (rng.standard_normal((3000, 4, 4)) + 4 * np.eye(4)).astype(dtype)
    s = (a @ np.swapaxes(a, 1, 2)).astype(dtype)
    v = rng.standard_normal((3000, 4)).astype(dtype)
    # matrix axes split on purpose: they are brought to one chunk
    x, y = da.from_array(a, chunks=(700, 2, 4)), da.from_array(v, chunks=(1000, 4))
    z = da.from_array(s, chunks=(500, 4, 4))
    cases = {
        "inv": (kd.inv(x), kelm.inv(a)),
        "det": (kd.det(x), kelm.det(a)),
        "solve": (kd.solve(x, y), kelm.solve(a, v)),
        "matmul": (kd.matmul(x, x), kelm.matmul(a, a)),
        "matvec": (kd.matvec(x, y), kelm.matvec(a, v)),
        "eigvalsh": (kd.eigvalsh(z), kelm.eigvalsh(s)),
        "norm": (kd.norm(y), kelm.norm(v)),
        "frobenius": (kd.apply("norm", x, axis=(-2, -1), signature="(m,n)->()"), kelm.norm(a, axis=(-2, -1))),
    }
    for name, (lazy, ref) in cases.items():
        np.testing.assert_array_equal(lazy.compute(), ref, err_msg=name)
    w, vec = kd.eigh(z)
    rw, rv = kelm.eigh(s)
    np.testing.assert_array_equal(w.compute(), rw)
    np.testing.assert_array_equal(vec.compute(), rv)
    ew = kd.eigvals(x).compute()
    assert ew.dtype.kind == "c"
    np.testing.assert_array_equal(ew, kelm.eigvals(a).astype(ew.dtype))
