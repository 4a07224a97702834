#!/usr/bin/env python3
"""Draws the folders and what each uses, as the build files say, into docs/architecture.md.

Usage: tools/architecture.py [--check]      --check changes nothing and fails if the picture is out of date
"""
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parent.parent
page = root / "docs/architecture.md"
begin, end = "<!-- picture: tools/architecture.py -->\n", "<!-- end of picture -->\n"


def folders():
    """Folder by target, and the targets that it uses."""
    found = {}
    for build_file in sorted(root.glob("*/**/CMakeLists.txt")):
        folder = build_file.parent.relative_to(root).as_posix()
        if folder.split("/")[0] not in ("common", "plugin", "headless"):
            continue
        text = re.sub(r"#.*", "", build_file.read_text())
        declared = re.search(r"felspar_folder\(\s*(\w+)(.*?)\)", text, re.DOTALL)
        linked = re.search(r"target_link_libraries\((\w+) PRIVATE(.*?)\)", text, re.DOTALL)
        if declared:
            uses = re.search(r"\bUSES\b(.*?)(\bLINK\b|$)", declared.group(2), re.DOTALL)
            found[declared.group(1)] = folder, uses.group(1).split() if uses else []
        elif linked:
            found[linked.group(1)] = folder, linked.group(2).split()
    return found


def picture():
    """A Mermaid graph: one box for each product, one arrow for each direct use."""
    found = folders()
    lines = ["```mermaid", "graph TD"]
    for product in ("plugin", "headless"):
        lines.append(f"    subgraph {product}")
        for target, (folder, _) in found.items():
            if folder.startswith(product + "/"):
                lines.append(f"        {target}[{folder.removeprefix(product + '/')}]")
        lines.append("    end")
    lines.append("    common[common]")
    lines += [f"    {target} --> {used}" for target, (_, uses) in found.items() for used in uses if used in found]
    return "\n".join(lines + ["```", ""])


text = page.read_text()
head, rest = text.split(begin)
drawn = head + begin + picture() + end + rest.split(end)[1]
if "--check" in sys.argv[1:]:
    sys.exit(None if drawn == text else f"{page.name}: the picture is out of date; run tools/architecture.py")
page.write_text(drawn)
