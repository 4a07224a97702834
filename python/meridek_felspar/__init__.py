"""MERIDEK_FELSPAR for Python: tracks, items, texts and files of the workstation, and the jobs of a dialogue editor.

Inside the workstation, the package uses the library that the workstation has loaded. `meridek_felspar.headless` gives
any Python process a workstation without a screen. Only the standard library is needed.
"""

from typing import TYPE_CHECKING

from . import headless
from ._library import library, library_path, version as _version
from .errors import CutTextWarning, FailureWarning, FelsparError, LibraryNotFound
from .handles import Envelope, Handle, Item, Project, Take, Track
from .media import PeakColumns, import_dialogue, peak_columns, peaks, peaks_at, peaks_of_selected, ride
from .pools import ValueArray, ValueMap
from .records import Peak, Record, RecordArray, TrackDetail
from .texts import PathInfo, ask, files, path_info, split
from .tracks import children, children_at, children_of_selected, track_depths, tracks, tracks_including, tracks_named

__version__: str  # the release's, which the library tells

if not TYPE_CHECKING:

    def __getattr__(name):
        """The version is asked for late, so that importing the package loads no library."""
        if name != "__version__":
            raise AttributeError(f"module {__name__!r} has no attribute {name!r}")
        try:
            return _version()
        except FelsparError as error:
            raise AttributeError(f"no version: {error}") from error


__all__ = [
    "CutTextWarning",
    "Envelope",
    "FailureWarning",
    "FelsparError",
    "Handle",
    "Item",
    "LibraryNotFound",
    "PathInfo",
    "Peak",
    "PeakColumns",
    "Project",
    "Record",
    "RecordArray",
    "Take",
    "Track",
    "TrackDetail",
    "ValueArray",
    "ValueMap",
    "ask",
    "children",
    "children_at",
    "children_of_selected",
    "files",
    "headless",
    "import_dialogue",
    "library",
    "library_path",
    "path_info",
    "peak_columns",
    "peaks",
    "peaks_at",
    "peaks_of_selected",
    "ride",
    "split",
    "track_depths",
    "tracks",
    "tracks_including",
    "tracks_named",
]
