"""MERIDEK_FELSPAR for Python: tracks, items, texts and files of the workstation, and the jobs of a dialogue editor.

Inside the workstation, the package uses the library that the workstation has loaded. `meridek_felspar.headless` gives
any Python process a workstation without a screen. Only the standard library is needed.
"""

from . import headless
from ._library import library, library_path
from .errors import CutTextWarning, FailureWarning, FelsparError, LibraryNotFound
from .handles import Envelope, Handle, Item, Project, Take, Track
from .media import PeakColumns, import_dialogue, peak_columns, peaks, peaks_at, peaks_of_selected, ride
from .pools import ValueArray, ValueMap
from .records import Peak, Record, RecordArray, TrackDetail
from .texts import PathInfo, ask, files, path_info, split
from .tracks import children, children_at, children_of_selected, track_depths, tracks, tracks_including, tracks_named

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
