"""Files, paths, strings, and the input form."""

import dataclasses
import json
import os
import pathlib
from typing import Any, List, Optional, Sequence

from . import _convert
from ._convert import Path
from ._library import library
from .errors import FelsparError
from .pools import listed


@dataclasses.dataclass(frozen=True)
class PathInfo:
    """The parts of a path. `path` is absolute; links and dots are not resolved."""

    path: str
    parent_path: str
    parent_name: str
    file_name: str
    stem: str
    extension: str  # without its dot
    type: str  # "File", "Folder", or empty for pipes, devices and the like


_PATH_KEYS = ("FilePath", "ParentPath", "ParentName", "FileName", "FileNameWithoutExtension", "Extension", "Type")


def _texts(handle: int) -> List[str]:
    buffer, read = _convert.new_buffer(), library().py_get_string_inarray
    texts = []
    for place in range(library().py_get_obj_size(handle)):
        read(handle, place, buffer)
        texts.append(_convert.text_in(buffer))
    return texts


def files(folder: Path, extension: str) -> List[pathlib.Path]:
    """Lists everything below the folder, at any depth, that has the extension, ignoring the case of ASCII letters.

    The order is that of the file system. Raises FelsparError if there is no such folder. Warns with CutTextWarning of
    a path longer than 1,023 bytes.
    """
    name = _convert.to_bytes(os.fspath(folder))
    with listed(library().py_GetFilePathList, name, _convert.to_bytes(extension)) as (answer, handle):
        if not answer:
            raise FelsparError(f"{os.fspath(folder)} is not a folder, or cannot be read completely")
        return list(map(pathlib.Path, _texts(handle)))


def split(text: str, separators: str) -> List[str]:
    """Splits a string at single-byte separators. An empty piece at the end is left out."""
    given = _convert.to_bytes(text), _convert.to_bytes(separators)
    with listed(library().py_GetStringSplitList, *given) as (_, handle):
        return _texts(handle)


def ask(title: str, captions: Sequence[str], defaults: Sequence[str] = ()) -> Optional[List[str]]:
    """Shows a form of 1 to 16 fields and waits for the user. Returns one answer per caption, None if it was cancelled.

    The host separates fields by commas, so captions and defaults must not contain any; the last answer may.
    """
    given = [*captions, *defaults]
    if not 1 <= len(captions) <= 16 or len(defaults) > len(captions) or any("," in text for text in given):
        raise FelsparError("a form has 1 to 16 captions, no more defaults than captions, and no commas in either")
    values = [*defaults, *[""] * (len(captions) - len(defaults))]
    arguments = [_convert.to_bytes(text) for text in (title, ",".join(captions), ",".join(values))]
    with listed(library().py_GetUserInputList, arguments[0], len(captions), *arguments[1:]) as (answer, handle):
        return _answers(_texts(handle), len(captions)) if answer else None


def _answers(pieces: List[str], count: int) -> List[str]:
    """Restores the number of answers: empty ones at the end are missing, and a comma has split the last one."""
    pieces = pieces + [""] * (count - len(pieces))
    return [*pieces[: count - 1], ",".join(pieces[count - 1 :])]


def path_info(path: Path) -> PathInfo:
    """Splits the path of something that exists into its parts.

    Raises FelsparError if it does not exist or its path is not UTF-8.
    """
    found = _path_json(_convert.to_bytes(os.fspath(path)))
    return PathInfo(*(found[key]["string"] for key in _PATH_KEYS))


def _path_json(path: bytes) -> Any:
    size = 4096
    while True:  # a text that fills the buffer may have been cut
        buffer = _convert.new_buffer(size)
        if library().py_GetPathInfo(path, buffer, size) != 0:
            raise FelsparError(f"{_convert.to_text(path)}: does not exist, or its path is not UTF-8")
        if len(buffer.value) < size - 1:
            return json.loads(buffer.value)
        size *= 4
