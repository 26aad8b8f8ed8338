"""The raw layer: every exported C function of the library, with the
signatures of the library's own header.

The header (``kelm.h``, which includes ``kelcore.h`` and ``kelm/*.h``) is read
at import and reduced in pure Python to what cffi's declaration parser
accepts: quoted includes are inlined, conditional blocks are resolved with
nothing defined but the header's own macros (so the C++ ``extern "C"`` lines
drop out), every other preprocessor line and every comment is removed, and
the export macros ``KELM_API``/``KELCORE_API`` are deleted.  No compiler is
needed and no signature is written down a second time.

Where things are found (first hit wins):

library  ``$KELM_LIBRARY`` (a path to ``libkelmv8.so.5.2``); else the dynamic
         loader's search for ``libkelmv8.so.5.2`` (an installed library, or
         ``LD_LIBRARY_PATH``); else the build trees of the source checkout
         this package sits in (``build-host/``, ``build/``).
kelcore  ``libkelcore.so.5`` in the directory of the library, else by the
         loader's search.  It is loaded before the library, so the library's
         own dependency resolves to the same copy.
header   ``$KELM_INCLUDE`` (the directory holding ``kelm.h``); ``include/``
         inside this package (an installed copy); ``include/`` of the source
         checkout this package sits in; ``include/`` beside the library's
         ``lib/`` directory (an install prefix); ``/usr/local/include`` and
         ``/usr/include``.
"""

import os
import re

import cffi

_here = os.path.dirname(os.path.abspath(__file__))
_checkout = os.path.dirname(os.path.dirname(_here))

LIBRARY_NAME = "libkelmv8.so.5.2"
CORE_NAME = "libkelcore.so.5"
_EXPORT_MACROS = ("KELM_API", "KELCORE_API")


class HeaderError(ImportError):
    """The header could not be found or reduced to declarations."""


def _strip_comments(text):
    text = re.sub(r"/\*.*?\*/", lambda m: "\n" * m.group(0).count("\n"), text, flags=re.S)
    return re.sub(r"//[^\n]*", "", text)


def _condition(expr, defined):
    """Value of the simple #if expressions the header uses."""
    expr = expr.strip()
    tokens = re.findall(r"!|&&|\|\||defined\s*\(\s*\w+\s*\)|defined\s+\w+|\w+|\(|\)", expr)
    py = []
    for tok in tokens:
        if tok == "!":
            py.append(" not ")
        elif tok == "&&":
            py.append(" and ")
        elif tok == "||":
            py.append(" or ")
        elif tok in "()":
            py.append(tok)
        elif tok.startswith("defined"):
            py.append(str(re.sub(r"defined|[\s()]", "", tok) in defined))
        elif tok.isdigit():
            py.append(str(int(tok) != 0))
        else:
            py.append("False")  # an undefined identifier counts as 0
    try:
        return bool(eval("".join(py), {"__builtins__": {}}))
    except Exception as exc:
        raise HeaderError("unsupported preprocessor condition: #if %s" % expr) from exc


def declarations(path):
    """The header at ``path`` reduced to plain C declarations for cffi."""
    defined = set()
    out = []

    def walk(file, seen):
        if file in seen:
            return
        seen = seen | {file}
        with open(file, encoding="utf-8") as f:
            text = _strip_comments(f.read())
        text = re.sub(r"\\\n", " ", text)
        stack = []  # (active, branch already taken)
        for line in text.splitlines():
            active = all(a for a, _ in stack)
            m = re.match(r"\s*#\s*(\w+)\s*(.*)", line)
            if not m:
                if active:
                    out.append(line)
                continue
            word, rest = m.group(1), m.group(2).strip()
            if word in ("ifdef", "ifndef"):
                value = (rest.split()[0] in defined) == (word == "ifdef")
                stack.append((value, value))
            elif word == "if":
                value = _condition(rest, defined)
                stack.append((value, value))
            elif word == "elif":
                _, taken = stack.pop()
                value = not taken and _condition(rest, defined)
                stack.append((value, taken or value))
            elif word == "else":
                _, taken = stack.pop()
                stack.append((not taken, True))
            elif word == "endif":
                stack.pop()
            elif not active:
                continue
            elif word == "define":
                defined.add(rest.split("(")[0].split()[0])
            elif word == "undef":
                defined.discard(rest.split()[0])
            elif word == "include":
                inc = re.match(r'"([^"]+)"', rest)
                if inc:  # system headers (<...>) are not needed by the declarations
                    walk(os.path.join(os.path.dirname(file), inc.group(1)), seen)
            elif word in ("pragma", "error", "warning", "line"):
                if word == "error":
                    raise HeaderError("%s: #error %s" % (file, rest))
            else:
                raise HeaderError("%s: unsupported directive #%s" % (file, word))
        if stack:
            raise HeaderError("%s: unterminated conditional" % file)

    walk(os.path.abspath(path), frozenset())
    text = "\n".join(out)
    for macro in _EXPORT_MACROS:
        text = re.sub(r"\b%s\b" % macro, "", text)
    text = re.sub(r'extern\s+"C"\s*\{', "", text)
    return re.sub(r"\n\s*\n+", "\n", text).strip() + "\n"


def status_names(decls):
    """{value: name} of the status enumeration in the declarations."""
    return {int(v): n for n, v in re.findall(r"\b(kel(?:Ok|Err\w+))\s*=\s*(-?\d+)", decls)}


def _header_candidates(library_path):
    cands = [os.environ["KELM_INCLUDE"]] if os.environ.get("KELM_INCLUDE") else []
    cands += [os.path.join(_here, "include"), os.path.join(_checkout, "include")]
    if library_path and os.path.isabs(library_path):
        prefix = os.path.dirname(os.path.dirname(os.path.realpath(library_path)))
        cands.append(os.path.join(prefix, "include"))
    cands += ["/usr/local/include", "/usr/include"]
    return cands


def _library_candidates():
    env = os.environ.get("KELM_LIBRARY")
    if env:
        return [env]
    return [LIBRARY_NAME] + [os.path.join(_checkout, d, LIBRARY_NAME) for d in ("build-host", "build")]


def _load():
    ffi = cffi.FFI()
    errors = []
    lib = core = library_path = None
    for cand in _library_candidates():
        if os.sep in cand and not os.path.exists(cand):
            errors.append("%s: no such file" % cand)
            continue
        core_cand = os.path.join(os.path.dirname(cand), CORE_NAME) if os.sep in cand else CORE_NAME
        if not os.path.exists(core_cand):
            core_cand = CORE_NAME
        try:
            core = ffi.dlopen(core_cand)
            lib = ffi.dlopen(cand)
        except OSError as exc:
            errors.append("%s: %s" % (cand, exc))
            continue
        library_path = os.path.abspath(cand) if os.sep in cand else cand
        break
    if lib is None:
        raise ImportError("kelm: cannot load %s (set KELM_LIBRARY to its path):\n  %s"
                          % (LIBRARY_NAME, "\n  ".join(errors)))
    if os.sep not in library_path:  # found by the loader: ask it where
        try:
            with open("/proc/self/maps") as maps:
                for line in maps:
                    if line.rstrip().endswith("/" + LIBRARY_NAME):
                        library_path = line.split(None, 5)[5].strip()
                        break
        except OSError:
            pass
    tried = []
    for d in _header_candidates(library_path):
        h = os.path.join(d, "kelm.h")
        tried.append(h)
        if os.path.isfile(h):
            header = h
            break
    else:
        raise HeaderError("kelm: kelm.h not found (set KELM_INCLUDE to its directory); tried:\n  "
                          + "\n  ".join(tried))
    decls = declarations(header)
    ffi.cdef(decls)
    return ffi, lib, core, library_path, header, decls


ffi, lib, core, library_path, header_path, _decls = _load()
#: {status value: the library's name of the status}
STATUS_NAMES = status_names(_decls)
#: names of every function the headers declare (operations, visible kernels, kelcore calls)
FUNCTIONS = tuple(sorted(set(re.findall(r"(\w+)\s*\(", _decls))))
