"""The shared library: where it is found, and the C prototypes of all its functions for Python.

Calls keep the interpreter's lock, so that threads never meet in the library's pools, which have no lock.
"""

import ctypes
import os
import pathlib
import sys
from typing import Any, Dict, List, Optional, Tuple

from .errors import FelsparError, LibraryNotFound

Handle = ctypes.c_ulonglong
_INT, _DOUBLE, _BOOL = ctypes.c_int, ctypes.c_double, ctypes.c_bool
_POINTER, _TEXT, _BUFFER = ctypes.c_void_p, ctypes.c_char_p, ctypes.POINTER(ctypes.c_char)
_HANDLE_OUT, _INT_OUT = ctypes.POINTER(Handle), ctypes.POINTER(_INT)

#: Result and arguments of every function.
PROTOTYPES: Dict[str, Tuple[Any, Tuple[Any, ...]]] = {
    # arrays and maps of values
    "py_create_array": (Handle, ()),
    "py_create_map": (Handle, ()),
    "py_set_array_ptr": (None, (Handle, _POINTER)),
    "py_set_array_int": (None, (Handle, _INT)),
    "py_set_array_double": (None, (Handle, _DOUBLE)),
    "py_set_array_bool": (None, (Handle, _BOOL)),
    "py_set_array_string": (None, (Handle, _TEXT)),
    "py_set_map_ptr": (None, (Handle, _TEXT, _POINTER)),
    "py_set_map_int": (None, (Handle, _TEXT, _INT)),
    "py_set_map_double": (None, (Handle, _TEXT, _DOUBLE)),
    "py_set_map_bool": (None, (Handle, _TEXT, _BOOL)),
    "py_set_map_string": (None, (Handle, _TEXT, _TEXT)),
    "py_get_ptr_inarray": (_POINTER, (Handle, _INT)),
    "py_get_int_inarray": (_INT, (Handle, _INT)),
    "py_get_double_inarray": (_DOUBLE, (Handle, _INT)),
    "py_get_bool_inarray": (_BOOL, (Handle, _INT)),
    "py_get_string_inarray": (None, (Handle, _INT, _BUFFER)),
    "py_get_ptr_inmap": (_POINTER, (Handle, _INT, _BUFFER)),
    "py_get_int_inmap": (_INT, (Handle, _INT, _BUFFER)),
    "py_get_double_inmap": (_DOUBLE, (Handle, _INT, _BUFFER)),
    "py_get_bool_inmap": (_BOOL, (Handle, _INT, _BUFFER)),
    "py_get_string_inmap": (None, (Handle, _INT, _BUFFER, _BUFFER)),
    # anything with a handle
    "py_get_obj_size": (_INT, (Handle,)),
    "py_release_obj": (None, (Handle,)),
    "py_release_obj2": (None, (Handle,)),
    # records
    "py_create_mkList_array": (Handle, ()),
    "py_create_mkObj_inarray": (Handle, (Handle, _TEXT)),
    "py_set_ptr_inmkObj": (None, (Handle, _TEXT, _POINTER)),
    "py_set_int_inmkObj": (None, (Handle, _TEXT, _INT)),
    "py_set_double_inmkObj": (None, (Handle, _TEXT, _DOUBLE)),
    "py_set_bool_inmkObj": (None, (Handle, _TEXT, _BOOL)),
    "py_set_string_inmkObj": (None, (Handle, _TEXT, _TEXT)),
    "py_get_key_inmkObj": (None, (Handle, _INT, _BUFFER, _BUFFER)),
    "py_get_int_inmkobj": (_INT, (Handle, _TEXT)),
    "py_get_double_inmkobj": (_DOUBLE, (Handle, _TEXT)),
    "py_get_bool_inmkobj": (_BOOL, (Handle, _TEXT)),
    "py_get_string_inmkobj": (None, (Handle, _TEXT, _BUFFER)),
    "py_get_ptr_inmkobj": (_POINTER, (Handle, _TEXT)),
    # lists of tracks, of records, of texts
    "py_GetTrackItemList": (_BOOL, (_POINTER, _HANDLE_OUT)),
    "py_GetTrackItemChildList": (_BOOL, (_POINTER, _HANDLE_OUT, _INT_OUT)),
    "py_GetTrackIdChildList": (_BOOL, (_POINTER, _INT, _HANDLE_OUT, _INT_OUT)),
    "py_GetSelectedTrackIdChildList": (_BOOL, (_POINTER, _INT, _HANDLE_OUT)),
    "py_GetTrackDepthList": (_BOOL, (_POINTER, _HANDLE_OUT)),
    "py_GetSamePerfectTrackNameList": (_BOOL, (_POINTER, _TEXT, _HANDLE_OUT)),
    "py_GetIncludePerfectTrackNameList": (_BOOL, (_POINTER, _TEXT, _HANDLE_OUT)),
    "py_GetMediaItemPeakList": (_BOOL, (_POINTER, _HANDLE_OUT)),
    "py_GetMediaIdPeakList": (_BOOL, (_POINTER, _INT, _HANDLE_OUT)),
    "py_GetSelectedMediaIdPeakList": (_BOOL, (_POINTER, _INT, _HANDLE_OUT)),
    "py_GetFilePathList": (_BOOL, (_TEXT, _TEXT, _HANDLE_OUT)),
    "py_GetStringSplitList": (_BOOL, (_TEXT, _TEXT, _HANDLE_OUT)),
    "py_GetUserInputList": (_BOOL, (_TEXT, _INT, _TEXT, _TEXT, _HANDLE_OUT)),
    # JSON texts
    "py_GetPathInfo": (_INT, (_TEXT, _BUFFER, _INT)),
    "py_SetMediaItemListRIDESCRIBER": (_INT, (_TEXT, _INT)),
    "py_LINGOMAT_InsertMediaItems": (
        _INT,
        (_TEXT, _TEXT, _DOUBLE, _DOUBLE, _INT, _BOOL, _BOOL, _INT, _TEXT, _BUFFER, _INT),
    ),
}

SUFFIX = {"win32": ".dll", "darwin": ".dylib"}.get(sys.platform, ".so")
_NAME = "libreaper_MERIDEK_FELSPAR_for_6.x" + SUFFIX
_INSTALLED_NAME = "reaper_MERIDEK_FELSPAR" + SUFFIX  # by which the workstation and Lua's `require` find it, too
_loaded: Optional[ctypes.PyDLL] = None


def places(file_name: str, variable: str) -> List[pathlib.Path]:
    """Where a library of ours may lie, in the order of search.

    The environment variable `variable` stands for all other places. Without it: the install tree that this package
    is in, or the build trees of its checkout, the one that was built last first.
    """
    if os.environ.get(variable):
        return [pathlib.Path(os.environ[variable])]
    package = pathlib.Path(__file__).resolve().parent
    if package.parts[-4:-1] == ("share", "felspar", "python"):
        return [package.parents[3] / "lib" / "felspar" / file_name]
    build = package.parents[1] / "build"
    built = [folder / "lib" / file_name for folder in (build, build / "release", build / "dev", build / "clang")]
    return sorted(built, key=_last_change, reverse=True)


def _last_change(path: pathlib.Path) -> float:
    try:
        return path.stat().st_mtime
    except OSError:
        return 0.0


def user_plugins() -> pathlib.Path:
    """The folder for extensions of the workstation's user."""
    if sys.platform == "win32":
        settings = pathlib.Path(os.environ.get("APPDATA", pathlib.Path.home()))
    elif sys.platform == "darwin":
        settings = pathlib.Path.home() / "Library" / "Application Support"
    else:
        settings = pathlib.Path.home() / ".config"
    return settings / "REAPER" / "UserPlugins"


def first_of(candidates: List[pathlib.Path], variable: str) -> pathlib.Path:
    """The first file that is there.

    Raises LibraryNotFound, which names all places.
    """
    for candidate in candidates:
        if candidate.is_file():
            return candidate
    looked = "\n  ".join(map(str, candidates))
    raise LibraryNotFound(f"not found; {variable} can say where it is. Looked for\n  {looked}")


def library_path() -> pathlib.Path:
    """The library's file: one that this process has loaded already comes first, since the pools and the host's
    functions are those of that copy."""
    candidates = places(_NAME, "FELSPAR_LIBRARY")
    if not os.environ.get("FELSPAR_LIBRARY"):
        candidates.append(user_plugins() / _INSTALLED_NAME)
    loaded = list(filter(_is_loaded, candidates))
    return loaded[0] if loaded else first_of(candidates, "FELSPAR_LIBRARY")


def _is_loaded(path: pathlib.Path) -> bool:
    only_if_loaded = getattr(os, "RTLD_NOLOAD", None)
    if only_if_loaded is None or not path.is_file():
        return False
    try:
        ctypes.PyDLL(str(path), mode=only_if_loaded | os.RTLD_NOW)
    except OSError:
        return False
    return True


def open_library(path: pathlib.Path, prototypes: Dict[str, Tuple[Any, Tuple[Any, ...]]]) -> ctypes.PyDLL:
    """Loads a shared library and declares its functions.

    Raises FelsparError when it cannot be loaded or lacks one of them.
    """
    try:
        loaded = ctypes.PyDLL(str(path.resolve()))
        for name, (result, arguments) in prototypes.items():
            function = getattr(loaded, name)
            function.restype, function.argtypes = result, arguments
    except (OSError, AttributeError) as error:
        raise FelsparError(f"{path}: {error}") from error
    return loaded


def library() -> ctypes.PyDLL:
    """The library, found and loaded at the first call."""
    global _loaded
    if _loaded is None:
        _loaded = open_library(library_path(), PROTOTYPES)
    return _loaded
