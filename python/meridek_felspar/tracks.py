"""Lists of tracks. `project` is the active one when it is not said."""

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
    """All tracks, without the master."""
    return _pointers(library().py_GetTrackItemList, address(project, Project))


def children(track: AnyHandle) -> List[Track]:
    """The tracks directly in a folder track; of None, those of the top level."""
    return _pointers(library().py_GetTrackItemChildList, address(track, Track))


def children_at(index: int, project: AnyHandle = None) -> List[Track]:
    """The tracks directly in the track of that index, counted from 0."""
    return _pointers(library().py_GetTrackIdChildList, address(project, Project), _convert.to_int(index))


def children_of_selected(index: int, project: AnyHandle = None) -> List[Track]:
    """The tracks directly in the selected track of that index, counted from 0 among the selected ones."""
    return _pointers(library().py_GetSelectedTrackIdChildList, address(project, Project), _convert.to_int(index))


def track_depths(project: AnyHandle = None) -> List[TrackDetail]:
    """`track` and `depth` of every track."""
    return _details(library().py_GetTrackDepthList, address(project, Project))


def tracks_named(name: str, project: AnyHandle = None) -> List[TrackDetail]:
    """`track` and `index` of the tracks of exactly that name."""
    function = library().py_GetSamePerfectTrackNameList
    return _details(function, address(project, Project), _convert.to_bytes(name))


def tracks_including(text: str, project: AnyHandle = None) -> List[TrackDetail]:
    """`track` and `index` of the tracks whose name contains the text, in any letter case of ASCII."""
    function = library().py_GetIncludePerfectTrackNameList
    return _details(function, address(project, Project), _convert.to_bytes(text))
