#!/usr/bin/env python3
"""Checks that each item of docs/decisions.md names what tests it, and that this exists, or says why nothing does.

An item ends with "Tested: `name`, ..." or "Untested: reason". A name is a file in tests/, bench/, .ci/ or packaging/,
by as much of its path as tells it from others. Prints what is wrong; the exit status is 1 then.
"""
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parent.parent
folders = ("tests", "bench", ".ci", "packaging")
files = [f"/{file.relative_to(root)}" for folder in folders for file in (root / folder).rglob("*")]


def faults_of(item):
    """What is wrong with an item, as phrases."""
    said = re.search(r"(Tested|Untested)\b.*", item)
    if not said:
        yield "is neither tested nor said to be untested"
        return
    names = re.findall(r"`(.*?)`", said[0])
    if said[1] == "Tested" and not names:
        yield "names no test"
    for name in names:
        found = [file for file in files if file.endswith("/" + name)]
        if len(found) != 1:
            yield f"names {name}: " + (" or ".join(found) or "there is no such file")


page = (root / "docs/decisions.md").read_text()
items = [" ".join(item.split()) for item in re.findall(r"^- (.*(?:\n  .*)*)", page, re.MULTILINE)]
faults = [f"{item[:60]}...: {fault}" for item in items for fault in faults_of(item)]
sys.exit("\n".join(faults) or None)
