#!/usr/bin/env python3
"""Holds the includes against the order of the rooms: a file may include its own room and what stands below it."""
import pathlib
import re
import sys

# From the ground up; everybody stands on what is common. A line's rooms do not know each other; single files of host/
# stand higher than the rest of it.
plugin = [["host"], ["utility"], ["host/dependency"], ["object"], ["api/project"], ["api/track"], ["api/media"],
          ["ride"], ["dialogue"], ["bindings/list_functions", "bindings/reference"],
          ["bindings/lua", "bindings/python"], ["host/api_rows"], ["host/api_table"], ["host/entry"]]
headless = [["headless/base"], ["headless/project"], ["headless/audio", "headless/rpp"], ["headless/host"],
            ["headless/report", "headless/script"], ["headless/output", "headless/reference"], ["headless/cli"],
            ["headless/capi"]]
floors = {room: (house, floor) for house, rooms in enumerate([plugin, headless, [["common"]]])
          for floor, line in enumerate(rooms) for room in line}


def room_of(path):
    fitting = [room for room in floors if path == room or path.startswith((room + "/", room + "."))]
    return max(fitting, key=len, default=None)


root = pathlib.Path(sys.argv[1])
upward, files = [], 0
for top in sorted({room.split("/")[0] for room in floors}):
    for file in sorted((root / top).rglob("*.[chi][pn][pc]")):
        name = file.relative_to(root).as_posix()
        room, files = room_of(name), files + 1
        for included in re.findall(r'^#include "(.+?)"', file.read_text(), re.MULTILINE):
            other = room_of(included)
            if other in (room, "common"):
                continue
            if other is None or floors[other][0] != floors[room][0] or floors[other][1] >= floors[room][1]:
                upward.append(f"{name} includes {included}")
print("\n".join(upward) or f"{files} files look down only")
sys.exit(1 if upward or files < 100 else 0)
