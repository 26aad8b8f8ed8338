#!/usr/bin/python3
"""kelm against numpy.linalg on stacks of 4x4 matrices, and the layer's
overhead over the C library called directly (through kelm.raw) on the same
buffers.

    KELM_LIBRARY=build-host/libkelmv8.so.5.2 python3 python/bench.py [--count N] [--threads T]

Prints one row per operation and dtype: best-of-R wall times and the ratios
numpy/kelm (speed-up) and kelm/raw (layer overhead)."""

import argparse
import os
import sys
import time

import numpy as np

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import kelm  # noqa: E402

ffi, lib = kelm.raw.ffi, kelm.raw.lib


def best(fns, repeat):
    """Best wall time of each function, the functions called in turn so that
    a busy spell of the machine weighs on all of them alike."""
    times = [float("inf")] * len(fns)
    for _ in range(repeat):
        for i, fn in enumerate(fns):
            if fn is None:
                continue
            t = time.perf_counter()
            fn()
            times[i] = min(times[i], time.perf_counter() - t)
    return [t if t != float("inf") else None for t in times]


def workloads(count, dtype, rng):
    n = 4
    t = "32f" if dtype == np.float32 else "64f"
    ct = "float *" if dtype == np.float32 else "double *"
    item = np.dtype(dtype).itemsize
    a = (rng.standard_normal((count, n, n)) + n * np.eye(n)).astype(dtype)
    b = rng.standard_normal((count, n, n)).astype(dtype)
    v = rng.standard_normal((count, n)).astype(dtype)
    s = (a @ np.swapaxes(a, 1, 2)).astype(dtype)
    p = lambda x: ffi.cast(ct, x.ctypes.data)
    obj, row = n * n * item, n * item
    buf = np.empty(64, dtype)
    dm = np.empty((count, n, n), dtype)
    dv = np.empty((count, n), dtype)
    dd = np.empty(count, dtype)
    lu = np.empty((count, n, n), dtype)
    idx = np.empty((count, n), np.intc)
    vals = np.empty((count, n), dtype)
    vals2, dm2 = np.empty_like(vals), np.empty_like(dm)
    f = lambda name: getattr(lib, "kelm%s_%s" % (name, t))

    def raw_solve():
        pi = ffi.cast("int *", idx.ctypes.data)
        f("LUDecomp_ma")(p(a), obj, row, item, pi, p(lu), obj, row, item, n, count)
        f("LUBackSubst_mava")(p(lu), obj, row, item, pi, p(v), row, item, p(dv), row, item, n, count)

    def raw_solve_inv():
        f("Invert_ma")(p(a), obj, row, item, p(buf), p(dm), obj, row, item, n, count)
        f("Mul_mava")(p(dm), obj, row, item, n, n, p(v), row, item, n, p(dv), row, item, count)

    return {
        "det": (lambda: np.linalg.det(a), lambda: kelm.det(a, out=dd),
                lambda: f("Det_ma")(p(a), obj, row, item, n, p(buf), p(dd), count)),
        "inv": (lambda: np.linalg.inv(a), lambda: kelm.inv(a, out=dm),
                lambda: f("Invert_ma")(p(a), obj, row, item, p(buf), p(dm), obj, row, item, n, count)),
        "solve": (lambda: np.linalg.solve(a, v), lambda: kelm.solve(a, v, out=dv), raw_solve_inv),
        "solve: LU route": (None, lambda: kelm.lu_solve(kelm.lu_factor(a), v, out=dv), raw_solve),
        "eigh": (lambda: np.linalg.eigh(s), lambda: kelm.eigh(s, out=(vals2, dm2)),
                 lambda: f("EigenValuesVectorsSym_ma")(p(s), obj, row, item, p(buf), p(dm), obj, row, item,
                                                       p(vals), n, count)),
        "matmul": (lambda: np.matmul(a, b), lambda: kelm.matmul(a, b, out=dm),
                   lambda: f("Mul_mama")(p(a), obj, row, item, n, n, p(b), obj, row, item, n, n, p(dm), obj, row,
                                         item, count)),
    }


def main():
    ap = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    ap.add_argument("--count", type=int, default=10**6)
    ap.add_argument("--repeat", type=int, default=7)
    ap.add_argument("--threads", type=int, default=None)
    ap.add_argument("--only", default=None, help="comma-separated operation names")
    args = ap.parse_args()
    if args.threads:
        kelm.set_num_threads(args.threads)
    print("kelm %s, %d thread(s), numpy %s, (%d, 4, 4) stacks, best of %d"
          % (kelm.raw.library_path, kelm.get_num_threads(), np.__version__, args.count, args.repeat))
    print("| operation | dtype | numpy ms | kelm ms | raw C ms | numpy/kelm | kelm/raw |")
    print("|---|---|---:|---:|---:|---:|---:|")
    rng = np.random.default_rng(1)
    for dtype in (np.float64, np.float32):
        for name, (npf, kf, rf) in workloads(args.count, dtype, rng).items():
            if args.only and name.split()[0].rstrip(":") not in args.only.split(","):
                continue
            tk, tr = best([kf, rf], args.repeat)
            (tn,) = best([npf], max(1, args.repeat // 2))
            cell = lambda x: "%.1f" % (1e3 * x) if x is not None else "-"
            ratio = lambda x, y: "%.2f" % (x / y) if x is not None and y is not None else "-"
            print("| %s | %s | %s | %s | %s | %s | %s |" % (name, np.dtype(dtype).name, cell(tn), cell(tk), cell(tr),
                                                             ratio(tn, tk), ratio(tk, tr)), flush=True)


if __name__ == "__main__":
    main()
