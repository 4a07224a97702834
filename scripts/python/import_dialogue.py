"""Imports localised lines beside their originals, and marks lines without a partner as red regions at the end.

PYTHONPATH=python python3 scripts/python/import_dialogue.py SUBJECT_FOLDER BASE_FOLDER OUT.rpp [GROUP...]
"""

import sys

import meridek_felspar as felspar

subject, base, project, *groups = sys.argv[1:]
REGION_SECONDS = 1.0
IN_USE = 0x1000000

with felspar.headless.open() as reaper:
    unmatched = felspar.import_dialogue(subject, base, groups, interval_seconds=0.5, match=True)
    red = reaper.ColorToNative(200, 40, 40) | IN_USE
    start = reaper.GetProjectLength(None)
    for number, line in enumerate(sorted(unmatched)):
        begin = start + number * REGION_SECONDS
        reaper.AddProjectMarker2(None, True, begin, begin + REGION_SECONDS, line.name, -1, red)
        print("no partner:", line)
    print(f"{reaper.CountMediaItems(None)} items on {reaper.CountTracks(None)} tracks")
    for failure in reaper.failures():
        print("failed:", failure, file=sys.stderr)
    reaper.save(project)
