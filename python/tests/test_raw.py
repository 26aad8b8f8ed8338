"""The raw layer: declarations read from the header, loading, threads."""

import os
import shutil
import subprocess
import sys
import threading
import time

import numpy as np
import pytest

import kelm
from kelm import raw as _raw
from conftest import PACKAGE_DIR


def test_header_reduction_resolves_conditionals_includes_and_macros(tmp_path):
    (tmp_path / "sub").mkdir()
    (tmp_path / "sub" / "part.h").write_text(
        "#ifndef PART_H\n#define PART_H\n/* a comment\n   over lines */\n"
        "EXPORT_API int part(int x); // trailing\n#endif\n")
    (tmp_path / "top.h").write_text(
        '#ifndef TOP_H\n#define TOP_H\n#include <stddef.h>\n#include "sub/part.h"\n#include "sub/part.h"\n'
        "#if defined(_WIN32)\n#define EXPORT_API __declspec(dllexport)\n#else\n"
        '#define EXPORT_API __attribute__((visibility("default")))\n#endif\n'
        '#ifdef __cplusplus\nextern "C" {\n#endif\n'
        "typedef int st;\nenum { okay = 0, bad = -5 };\n"
        "#if !defined(NOPE) && defined(TOP_H)\nEXPORT_API st kept(const double* p,\n    int n);\n"
        "#elif 1\nint dropped(void);\n#else\nint dropped2(void);\n#endif\n"
        "#ifdef __cplusplus\n}\n#endif\n#endif\n")
    old = _raw._EXPORT_MACROS
    _raw._EXPORT_MACROS = ("EXPORT_API",)
    try:
        decls = _raw.declarations(str(tmp_path / "top.h"))
    finally:
        _raw._EXPORT_MACROS = old
    assert "#" not in decls and "/*" not in decls and "EXPORT_API" not in decls and "}" not in decls.split("enum")[0]
    assert decls.count("int part(int x);") == 1
    assert "kept(const double* p," in decls and "dropped" not in decls
    import cffi
    ffi = cffi.FFI()
    ffi.cdef(decls)  # the reduced text is what cffi accepts
    assert _raw.status_names("enum { kelOk = 0, kelErrX = -7 };") == {0: "kelOk", -7: "kelErrX"}


def test_every_declared_function_is_in_the_libraries():
    assert len(_raw.FUNCTIONS) > 790
    for name in _raw.FUNCTIONS:
        assert getattr(_raw.lib if not name.startswith("kelGet") and name != "kelSetNumThreads"
                       else _raw.core, name) is not None
    assert _raw.STATUS_NAMES[0] == "kelOk" and _raw.STATUS_NAMES[-195] == "kelErrSingular"
    assert len(_raw.STATUS_NAMES) == 13


def test_raw_call_on_numpy_memory():
    a = np.arange(1.0, 19.0).reshape(2, 3, 3)
    a[:, 2, 2] += 1  # not singular
    dst = np.empty(2)
    buf = np.empty(12)
    ffi, lib = _raw.ffi, _raw.lib
    p = lambda x: ffi.cast("double *", x.ctypes.data)
    assert lib.kelmDet_ma_64f(p(a), 72, 24, 8, 3, p(buf), p(dst), 2) == 0
    np.testing.assert_allclose(dst, np.linalg.det(a), rtol=1e-12)
    v = kelm.library_version()
    assert (v["libName"], v["versionText"], v["cpuTag"]) == ("libkelmv8.so.5.2", "5.2", "v8")


def test_thread_count(threads):
    assert threads(1) == 1 and kelm.get_num_threads() == 1
    assert threads(0) == 1
    assert threads(2) == 2 and kelm.get_num_threads() == 2


def test_calls_release_the_gil(threads):
    """A Python thread keeps running while the library works."""
    threads(1)
    a = np.random.default_rng(0).standard_normal((300000, 6, 6)) + 6 * np.eye(6)
    out = np.empty_like(a)
    ffi, lib = _raw.ffi, _raw.lib
    p = lambda x: ffi.cast("double *", x.ctypes.data)
    buf = np.empty(42)
    ticks = []
    stop = threading.Event()

    def spin():
        while not stop.is_set():
            ticks.append(time.perf_counter())

    t = threading.Thread(target=spin)
    t.start()
    time.sleep(0.05)
    t0 = time.perf_counter()
    # one call: between calls the thread would get its turn anyway
    lib.kelmInvert_ma_64f(p(a), 288, 48, 8, p(buf), p(out), 288, 48, 8, 6, len(a))
    t1 = time.perf_counter()
    stop.set()
    t.join()
    inside = [x for x in ticks if t0 + 0.2 * (t1 - t0) < x < t1 - 0.2 * (t1 - t0)]
    assert t1 - t0 > 0.02 and len(inside) > 100, (t1 - t0, len(inside))


def _import_in_subprocess(env):
    code = "import kelm; print(kelm.raw.library_path); print(kelm.raw.header_path)"
    full = dict(os.environ, PYTHONPATH=PACKAGE_DIR, **env)
    return subprocess.run([sys.executable, "-c", code], env=full, capture_output=True, text=True)


def test_where_the_library_and_header_are_found(tmp_path):
    inc = tmp_path / "inc"
    shutil.copytree(os.path.dirname(_raw.header_path), inc)
    r = _import_in_subprocess({"KELM_INCLUDE": str(inc)})
    assert r.returncode == 0, r.stderr
    assert r.stdout.split("\n")[1] == str(inc / "kelm.h")
    r = _import_in_subprocess({"KELM_LIBRARY": str(tmp_path / "libkelmv8.so.5.2")})
    assert r.returncode != 0 and "KELM_LIBRARY" in r.stderr
    r = _import_in_subprocess({"KELM_INCLUDE": str(tmp_path)})  # no kelm.h there: the next candidate
    assert r.returncode == 0 and r.stdout.split("\n")[1] == _raw.header_path
