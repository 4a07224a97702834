"""Finds and loads the shared library, and declares its functions as the library's own tables describe them.

Calls keep the interpreter's lock, so that threads never meet in the library's pools, which have no lock.
"""

import ctypes
import os
import pathlib
import sys
from typing import Any, Callable, Dict, List, Optional, Tuple

from . import handles
from ._definitions import Definition, read_table
from .errors import FelsparError, LibraryNotFound

PoolHandle = ctypes.c_ulonglong
Prototypes = Dict[str, Tuple[Any, Tuple[Any, ...]]]  # result and arguments of each function

_C_TYPES: Dict[str, Any] = {
    **dict.fromkeys(handles.KINDS, ctypes.c_void_p),
    "void": None,
    "bool": ctypes.c_bool,
    "int": ctypes.c_int,
    "int*": ctypes.POINTER(ctypes.c_int),
    "double": ctypes.c_double,
    "const char*": ctypes.c_char_p,
    "char*": ctypes.POINTER(ctypes.c_char),
    "unsigned long long": PoolHandle,
    "unsigned long long*": ctypes.POINTER(PoolHandle),
}

SUFFIX = {"win32": ".dll", "darwin": ".dylib"}.get(sys.platform, ".so")
_NAME = "libreaper_MERIDEK_FELSPAR_for_6.x" + SUFFIX
_INSTALLED_NAME = "reaper_MERIDEK_FELSPAR" + SUFFIX  # the name that the workstation and Lua's `require` expect
_INSTALLED_IN = (("share", "felspar", "python"), ("lib", "python3", "dist-packages"))  # below a prefix
_loaded: Optional[ctypes.PyDLL] = None


def places(file_name: str, bundled_name: str, variable: str) -> List[pathlib.Path]:
    """Returns where a library of this project may be, in order of preference.

    If the environment variable `variable` is set, it is the only place. Otherwise the place is a folder of this
    package's own, the installation or archive that it is in, or the build folders of its checkout, with the most
    recent build first.
    """
    if os.environ.get(variable):
        return [pathlib.Path(os.environ[variable])]
    package = pathlib.Path(__file__).resolve().parent
    bundled = package / "libraries"
    if bundled.is_dir():
        return [bundled / bundled_name]
    if package.parts[-4:-1] in _INSTALLED_IN:
        return [package.parents[3] / "lib" / "felspar" / file_name]
    root = package.parents[1]
    archived = [root / bundled_name, root / "lib" / bundled_name]
    build = root / "build"
    built = [folder / "lib" / file_name for folder in (build, build / "release", build / "dev", build / "clang")]
    return sorted(archived + built, key=_last_change, reverse=True)


def _last_change(path: pathlib.Path) -> float:
    try:
        return path.stat().st_mtime
    except OSError:
        return 0.0


def user_plugins() -> pathlib.Path:
    """Returns the user's folder for extensions of the workstation."""
    if sys.platform == "win32":
        settings = pathlib.Path(os.environ.get("APPDATA", pathlib.Path.home()))
    elif sys.platform == "darwin":
        settings = pathlib.Path.home() / "Library" / "Application Support"
    else:
        settings = pathlib.Path(os.environ.get("XDG_CONFIG_HOME") or pathlib.Path.home() / ".config")
    return settings / "REAPER" / "UserPlugins"


def first_of(candidates: List[pathlib.Path], variable: str) -> pathlib.Path:
    """Returns the first file that exists.

    Raises LibraryNotFound, which lists all places.
    """
    for candidate in candidates:
        if candidate.is_file():
            return candidate
    looked = "\n  ".join(map(str, candidates))
    raise LibraryNotFound(f"not found; set {variable} to its path. Looked for\n  {looked}")


def library_path() -> pathlib.Path:
    """Returns the library's file. A copy that this process has already loaded comes first, because that copy holds the
    pools and the host's functions."""
    candidates = places(_NAME, _INSTALLED_NAME, "FELSPAR_LIBRARY")
    if not os.environ.get("FELSPAR_LIBRARY"):
        candidates.append(user_plugins() / _INSTALLED_NAME)
    loaded = list(filter(_is_loaded, candidates))
    return loaded[0] if loaded else first_of(candidates, "FELSPAR_LIBRARY")


def _is_loaded(path: pathlib.Path) -> bool:
    if sys.platform == "win32":
        find = ctypes.WinDLL("kernel32").GetModuleHandleW
        find.restype, find.argtypes = ctypes.c_void_p, [ctypes.c_wchar_p]
        return path.is_file() and find(str(path.resolve())) is not None
    only_if_loaded = getattr(os, "RTLD_NOLOAD", None)
    if only_if_loaded is None or not path.is_file():
        return False
    try:
        ctypes.PyDLL(str(path), mode=only_if_loaded | os.RTLD_NOW)
    except OSError:
        return False
    return True


def open_library(path: pathlib.Path, prototypes_of: Callable[[ctypes.PyDLL], Prototypes]) -> ctypes.PyDLL:
    """Loads a shared library and declares its functions.

    Raises FelsparError if it cannot be loaded, lacks one of them, or describes one in words that are not known here.
    """
    try:
        loaded = ctypes.PyDLL(str(path.resolve()))
        for name, (result, arguments) in prototypes_of(loaded).items():
            function = getattr(loaded, name)
            function.restype, function.argtypes = result, arguments
    except (OSError, AttributeError, ValueError) as error:
        raise FelsparError(f"{path}: {error}") from error
    return loaded


def described_prototypes(loaded: ctypes.PyDLL) -> Prototypes:
    """Returns the prototypes of the library's functions from its own table.

    Raises ValueError for a library without the table, and for an unknown type.
    """
    table = read_table(loaded, "felspar_python_functions")
    return {name: _prototype(name, definition) for name, definition in table.items()}


def _prototype(name: str, definition: Definition) -> Tuple[Any, Tuple[Any, ...]]:
    for word in (definition.result, *definition.types):
        if word not in _C_TYPES:
            raise ValueError(f"{name} has the unknown type {word!r}")
    return _C_TYPES[definition.result], tuple(_C_TYPES[word] for word in definition.types)


def library() -> ctypes.PyDLL:
    """Returns the library, which the first call finds and loads."""
    global _loaded
    if _loaded is None:
        _loaded = open_library(library_path(), described_prototypes)
    return _loaded


def version() -> str:
    """Returns the version of the release that the library is from.

    Raises LibraryNotFound if there is no library, FelsparError if it is older than version 1.2.0.
    """
    try:
        return ctypes.string_at(ctypes.addressof(ctypes.c_char.in_dll(library(), "felspar_version"))).decode()
    except ValueError as error:
        raise FelsparError(f"{library_path()}: it does not tell its version") from error
