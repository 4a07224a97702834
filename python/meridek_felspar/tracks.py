"""Lists of tracks. Without a `project`, they are those of the active one."""

from typing import Any, List

from . import _convert
from ._library import library
from .handles import AnyHandle, Project, Track, address
from .pools import listed
from .records import TrackDetail, read_columns, track_details


def _pointers(function: Any, *arguments: Any) -> List[Track]:
    with listed(function, *arguments) as (_, handle):
        return [
            Track(library().py_get_ptr_inarray(handle, place) or 0)
            for place in range(library().py_get_obj_size(handle))
        ]


def _details(function: Any, *arguments: Any) -> List[TrackDetail]:
    with listed(function, *arguments) as (_, handle):
        return track_details(read_columns(handle))


def tracks(project: AnyHandle = None) -> List[Track]:
    """Returns all tracks except the master track."""
    return _pointers(library().py_GetTrackItemList, address(project, Project))


def children(track: AnyHandle) -> List[Track]:
    """Returns the tracks directly inside a folder track, or the top-level tracks for None."""
    return _pointers(library().py_GetTrackItemChildList, address(track, Track))


def children_at(index: int, project: AnyHandle = None) -> List[Track]:
    """Returns the tracks directly inside the track with that index, counted from 0."""
    return _pointers(library().py_GetTrackIdChildList, address(project, Project), _convert.to_int(index))


def children_of_selected(index: int, project: AnyHandle = None) -> List[Track]:
    """Returns the tracks directly inside the track with that index among the selected ones, counted from 0."""
    return _pointers(library().py_GetSelectedTrackIdChildList, address(project, Project), _convert.to_int(index))


def track_depths(project: AnyHandle = None) -> List[TrackDetail]:
    """Returns `track` and `depth` of every track."""
    return _details(library().py_GetTrackDepthList, address(project, Project))


def tracks_named(name: str, project: AnyHandle = None) -> List[TrackDetail]:
    """Returns `track` and `index` of the tracks with exactly that name."""
    function = library().py_GetSamePerfectTrackNameList
    return _details(function, address(project, Project), _convert.to_bytes(name))


def tracks_including(text: str, project: AnyHandle = None) -> List[TrackDetail]:
    """Returns `track` and `index` of the tracks whose names contain the text, ignoring the case of ASCII letters."""
    function = library().py_GetIncludePerfectTrackNameList
    return _details(function, address(project, Project), _convert.to_bytes(text))
