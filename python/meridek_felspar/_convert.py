"""Converts values for the library and back.

The library's strings are UTF-8. Bytes that are not UTF-8, as in some file names, are surrogate escapes in a `str`.
"""

import ctypes
import os
import warnings
from typing import Any, Union

from .errors import CutTextWarning, FelsparError

Path = Union[str, "os.PathLike[str]"]
TEXT_BYTES = 1024  # of each buffer whose size is not passed to the library


def to_bytes(text: str) -> bytes:
    """Raises FelsparError for anything but a string without NUL."""
    if not isinstance(text, str) or "\0" in text:
        raise FelsparError(f"expected a string without NUL, not {text!r:.80}")
    try:
        return text.encode("utf-8", "surrogateescape")
    except UnicodeEncodeError as error:
        raise FelsparError(f"{text!r:.80} cannot be written as UTF-8: {error.reason}") from None


def to_text(data: bytes) -> str:
    return data.decode("utf-8", "surrogateescape")


def to_int(value: int) -> int:
    """Raises FelsparError for anything but a 32-bit integer."""
    if not isinstance(value, int) or not -(2**31) <= value < 2**31:
        raise FelsparError(f"{value!r:.80} is not a 32-bit integer")
    return int(value)


def to_float(value: float) -> float:
    """Raises FelsparError for anything but a number."""
    try:
        return float(value)
    except (TypeError, ValueError, OverflowError):
        raise FelsparError(f"{value!r:.80} is not a number") from None


def new_buffer(size: int = TEXT_BYTES) -> Any:
    return ctypes.create_string_buffer(size)


def text_in(buffer: Any) -> str:
    """Returns the string in a buffer. Warns if it may have been cut, which the library does not report."""
    data = buffer.value
    if len(data) == len(buffer) - 1:
        warnings.warn(f"text of {len(data)} bytes or more was cut: {data[:40]!r}...", CutTextWarning, stacklevel=3)
    return to_text(data)
