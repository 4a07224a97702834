"""Colours tracks by what their names begin with, and numbers the ones that have no name.

PYTHONPATH=python python3 scripts/python/colour_tracks.py IN.rpp OUT.rpp
"""

import sys

import meridek_felspar as felspar

RULES = {  # beginning of a name, in any letter case: red, green, blue
    "dx": (70, 130, 220),
    "fx": (220, 120, 40),
    "mx": (60, 160, 90),
}
IN_USE = 0x1000000

with felspar.headless.open(sys.argv[1]) as reaper:
    for number, track in enumerate(felspar.tracks(), 1):
        _, name = reaper.GetSetMediaTrackInfo_String(track, "P_NAME", "", False)
        if not name:
            kind = "folder" if felspar.children(track) else "track"
            reaper.GetSetMediaTrackInfo_String(track, "P_NAME", f"{kind} {number:02}", True)
        for beginning, rgb in RULES.items():
            if name.lower().startswith(beginning):
                reaper.SetTrackColor(track, reaper.ColorToNative(*rgb) | IN_USE)
        print(reaper.GetTrackName(track)[1], hex(reaper.GetTrackColor(track)))
    reaper.save(sys.argv[2])
