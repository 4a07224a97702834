"""Handles: the addresses by which scripts name objects of the workstation.

Whatever takes a handle also takes an int, or the string that the workstation's own Python functions use, such as
"(MediaTrack*)0x000055D0C0FFEE00". `str` of a handle is that string, so handles can be passed to those functions.
"""

from typing import Dict, Type, Union

from .errors import FelsparError


class Handle(int):
    """The address of an object, 0 for none."""

    type_name = "void*"

    def __repr__(self) -> str:
        return f"({self.type_name})0x{int(self):016X}"

    __str__ = __repr__


class Project(Handle):
    """A project; 0 is the active one."""

    type_name = "ReaProject*"


class Track(Handle):
    """A track."""

    type_name = "MediaTrack*"


class Item(Handle):
    """A media item."""

    type_name = "MediaItem*"


class Take(Handle):
    """A take of an item."""

    type_name = "MediaItem_Take*"


class Envelope(Handle):
    """An envelope of a track or take."""

    type_name = "TrackEnvelope*"


class Source(Handle):
    """The audio source of a take."""

    type_name = "PCM_source*"


class SampleReader(Handle):
    """Reads the samples of a take or a track."""

    type_name = "AudioAccessor*"


class FastString(Handle):
    """A text of any length that functions take and return by handle."""

    type_name = "WDL_FastString*"


class EditedEnvelope(Handle):
    """A copy of an envelope that is being edited."""

    type_name = "BR_Envelope*"


AnyHandle = Union[int, str, None]
KINDS: Dict[str, Type[Handle]] = {
    kind.type_name: kind
    for kind in (Handle, Project, Track, Item, Take, Envelope, Source, SampleReader, FastString, EditedEnvelope)
}


def address(value: AnyHandle, kind: Type[Handle]) -> int:
    """Returns the address that `value` names, 0 for None.

    Raises FelsparError for a handle of another kind and for anything that is not an address.
    """
    if isinstance(value, Handle) and type(value) not in (kind, Handle) and kind is not Handle:
        raise FelsparError(f"expected a {kind.type_name}, not {value}")
    if isinstance(value, str):
        value = _parsed(value, kind)
    number = 0 if value is None else value
    if not isinstance(number, int) or isinstance(number, bool) or not 0 <= number < 2**64:
        raise FelsparError(f"{value!r} is not a {kind.type_name}")
    return int(number)


def _parsed(text: str, kind: Type[Handle]) -> int:
    type_name, bracket, digits = text.partition(")")
    if not bracket or (type_name != f"({kind.type_name}" and kind is not Handle):
        raise FelsparError(f"{text!r} is not a {kind.type_name}")
    try:
        return int(digits, 16)
    except ValueError:
        raise FelsparError(f"{text!r} is not a {kind.type_name}") from None
