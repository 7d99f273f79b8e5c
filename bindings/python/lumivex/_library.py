"""Finding the shared library, and its functions as the header declares them."""
import ctypes
import os
import sys
import threading

import numpy

from ._exports import read_exports

C_TYPES = {"uint8_t": ctypes.c_uint8, "int32_t": ctypes.c_int32, "uint32_t": ctypes.c_uint32,
           "intptr_t": ctypes.c_ssize_t, "float": ctypes.c_float, "double": ctypes.c_double}
EXPORTS = read_exports()


class LibraryNotFound(OSError):
    """The shared library cannot be loaded."""


def _file_names():
    if sys.platform == "win32":
        return ["lumivex.dll"]
    return ["liblumivex.so.1"]


def candidates():
    """Where the library may be, in the order in which it is looked for.

    A variable that somebody has set is obeyed and nothing else tried: a library from elsewhere would only hide the
    mistake. Then comes the package itself, as a wheel has it, and at last what the system has installed.
    """
    named = os.environ.get("LUMIVEX_LIBRARY")
    if named:
        return [named]
    here = os.path.dirname(os.path.abspath(__file__))
    inside = [os.path.join(here, name) for name in _file_names()]
    return [path for path in inside if os.path.exists(path)] + _file_names()


def load():
    # On 32-bit Windows the callee clears the stack. Both kinds release the interpreter's lock during a call.
    stdcall = sys.platform == "win32" and ctypes.sizeof(ctypes.c_void_p) == 4
    kind = ctypes.WinDLL if stdcall else ctypes.CDLL
    failures = []
    for path in candidates():
        try:
            return kind(path)
        except OSError as failure:
            failures.append(f"{path}: {failure}")
    raise LibraryNotFound("the Lumivex library cannot be loaded; set LUMIVEX_LIBRARY to its path. Tried "
                          + "; ".join(failures))


class Pointer(ctypes.c_void_p):
    """What the raw functions take for a pointer: a contiguous array, None, or anything that ctypes takes."""

    @classmethod
    def from_param(cls, value):
        if isinstance(value, numpy.ndarray):
            if not value.flags.c_contiguous:
                raise ctypes.ArgumentError("the array is not contiguous")
            return ctypes.c_void_p(value.ctypes.data)
        return ctypes.c_void_p.from_param(value)


class Raw:
    """The exports with all their C arguments: numbers, and arrays, ctypes pointers or None for pointers.

    Nothing is checked but the number of arguments and that they convert.
    """

    def __init__(self):
        self._library = None
        self._lock = threading.Lock()
        self._by_name = {export.name: export for export in EXPORTS}

    def __dir__(self):
        return sorted(self._by_name)

    def __getattr__(self, name):
        export = self.__dict__["_by_name"].get(name)
        if export is None:
            raise AttributeError(f"the library has no export {name}")
        with self._lock:
            if self._library is None:
                self._library = load()
        function = getattr(self._library, name)
        function.restype = C_TYPES[export.result]
        function.argtypes = [Pointer if p.pointer else C_TYPES[p.type] for p in export.parameters]
        setattr(self, name, function)
        return function


raw = Raw()
