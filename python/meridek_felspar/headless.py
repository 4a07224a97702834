"""The headless workstation in a Python process.

    with headless.open("scene.rpp") as workstation:
        for track in meridek_felspar.tracks():
            workstation.SetTrackColor(track, workstation.ColorToNative(0, 160, 0))
        workstation.save("coloured.rpp")

Every function that Lua scripts find in the table `reaper` is a method of the workstation: those of the workstation
itself, and those that the library has registered (`MK_...`). One workstation can be open at a time.
"""

import atexit
import ctypes
import os
import pathlib
import warnings
from types import MappingProxyType
from typing import Any, Dict, Iterator, List, Mapping, Optional, Sequence, Union

from . import _convert, _library
from ._convert import Path
from ._definitions import definition_at
from ._functions import Call, Function
from .errors import FailureWarning, FelsparError

_TEXT, _TEXT_OUT = ctypes.c_char_p, ctypes.POINTER(ctypes.c_void_p)
_PROTOTYPES = {
    "felspar_open": (ctypes.c_bool, (_TEXT, _TEXT)),
    "felspar_answer": (ctypes.c_bool, (_TEXT, _TEXT)),
    "felspar_save": (ctypes.c_bool, (_TEXT,)),
    "felspar_function": (ctypes.c_bool, (ctypes.c_int, _TEXT_OUT, _TEXT_OUT, _TEXT_OUT)),
    "felspar_next_failure": (_TEXT, ()),
    "felspar_close": (None, ()),
}
_loaded: Optional[ctypes.PyDLL] = None


def _headless_library() -> ctypes.PyDLL:
    global _loaded
    if _loaded is None:
        places = _library.places("libfelspar_headless" + _library.SUFFIX, "FELSPAR_HEADLESS_LIBRARY")
        _loaded = _library.open_library(_library.first_of(places, "FELSPAR_HEADLESS_LIBRARY"), lambda _: _PROTOTYPES)
    return _loaded


class Workstation:
    """A workstation with the library loaded, as `open` gives it; closed at the end of its `with` block, by `close`, or
    at the latest when the interpreter ends."""

    def __init__(self, project: Optional[Path]) -> None:
        self._library = _headless_library()
        self._untold: List[str] = []
        plugin = os.fsencode(_library.library_path())
        self._is_open = self._library.felspar_open(plugin, None if project is None else os.fsencode(project))
        if not self._is_open:
            raise FelsparError("; ".join(self._told()))
        atexit.register(self._drop)
        _library.library()  # the copy that is loaded now
        self._functions = dict(self._script_functions())

    def __getattr__(self, name: str) -> Function:
        functions: Dict[str, Function] = self.__dict__.get("_functions", {})
        if name not in functions:
            raise AttributeError(f"the workstation has no function {name}")
        self._check_open()
        return functions[name]

    def __dir__(self) -> List[str]:
        return [*super().__dir__(), *self._functions]

    def __enter__(self) -> "Workstation":
        return self

    def __exit__(self, *_: object) -> None:
        self._drop()

    def save(self, project: Path) -> pathlib.Path:
        """Saves the project, whole or not at all, in an existing folder: where no file is, in place of a project that
        was saved so before, or of the one that was opened, which is kept as "NAME-bak" if another program had saved it.

        Raises FelsparError.
        """
        self._check_open()
        failures = self.failures()
        is_saved = self._library.felspar_save(os.fsencode(project))
        if not is_saved:
            raise FelsparError("; ".join(self._told()))
        self._untold = failures + self._told()
        return pathlib.Path(project)

    def failures(self) -> List[str]:
        """What functions and commands could not do since this was last asked, a line each."""
        untold, self._untold = self._untold, []
        return untold + self._told()

    def answer(self, title: str, answer: str) -> None:
        """Answers the next dialog of that title beforehand: a button's name, or the values of a form with commas
        between them. Several answers are given in turn, and the last one stays."""
        self._check_open()
        self._library.felspar_answer(_convert.to_bytes(title), _convert.to_bytes(answer))

    def close(self) -> None:
        """Drops the project. What nobody has asked `failures` about is told as a FailureWarning."""
        self._drop()

    def _drop(self) -> None:
        if self._is_open:
            untold = self.failures()
            self._is_open = False
            atexit.unregister(self._drop)
            self._library.felspar_close()
            for failure in untold:
                warnings.warn(failure, FailureWarning, stacklevel=3)

    def _check_open(self) -> None:
        if not self._is_open:
            raise FelsparError("the workstation is closed")

    def _told(self) -> List[str]:
        return list(map(_convert.to_text, iter(self._library.felspar_next_failure, None)))

    def _script_functions(self) -> Iterator[Any]:
        name, definition, call = (ctypes.c_void_p() for _ in range(3))
        index = 0
        while self._library.felspar_function(index, name, definition, call):
            plain_name = _convert.to_text(ctypes.string_at(name.value or 0))
            function = Function(plain_name, definition_at(definition.value or 0), Call(call.value or 0))
            if function.can_be_called():
                yield plain_name, function
            index += 1


def open(  # shadows the built-in one in this module alone, which opens no files
    project: Optional[Path] = None, answers: Mapping[str, Union[str, Sequence[str]]] = MappingProxyType({})
) -> Workstation:
    """Opens a workstation on a project file, or on an empty project, and loads the library into it.

    `answers` are given to dialogs, by title. Raises FelsparError: something is missing, the project cannot be read, or
    another workstation is open.
    """
    workstation = Workstation(project)
    for title, given in answers.items():
        for answer in [given] if isinstance(given, str) else given:
            workstation.answer(title, answer)
    return workstation
