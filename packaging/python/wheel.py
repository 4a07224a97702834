#!/usr/bin/env python3
"""Packs the Python package with both libraries into a wheel. The same files give the same bytes.

Usage: wheel.py PLUGIN HEADLESS THIRD_PARTY OUT   (two libraries, the licences of what is in them, a folder)
"""

import base64
import hashlib
import pathlib
import re
import sys
import tomllib
import zipfile
from typing import Dict

import abi

TREE = pathlib.Path(__file__).resolve().parents[2]
PACKAGE = TREE / "python" / "meridek_felspar"
EARLIEST = (1980, 1, 1, 0, 0, 0)  # that zip files know


def version() -> str:
    """Returns the project's version."""
    text = (TREE / "CMakeLists.txt").read_text(encoding="utf-8")
    project = re.search(r"^project\(\S+ VERSION (\S+)", text, re.MULTILINE)
    if project is None:
        raise ValueError("CMakeLists.txt gives the project no version")
    return project[1]


def metadata() -> str:
    """Returns the core metadata, from pyproject.toml and the README."""
    project = tomllib.loads((TREE / "pyproject.toml").read_text(encoding="utf-8"))["project"]
    fields = {
        "Metadata-Version": "2.1",
        "Name": project["name"],
        "Version": version(),
        "Summary": project["description"],
        "Author": ", ".join(author["name"] for author in project["authors"]),
        "License": project["license"]["text"],
        "Requires-Python": project["requires-python"],
        "License-File": "LICENSE",
        "Description-Content-Type": "text/markdown",
    }
    readme = (TREE / "README.md").read_text(encoding="utf-8")
    return "".join(f"{name}: {value}\n" for name, value in fields.items()) + "\n" + readme


def contents(libraries: Dict[str, pathlib.Path], third_party: str, tag: str) -> Dict[str, bytes]:
    """Returns the bytes of each file by its name in the wheel, but for the list of them."""
    modules = (*PACKAGE.glob("*.py"), PACKAGE / "py.typed")
    files = {f"meridek_felspar/{file.name}": file.read_bytes() for file in modules}
    for name, library in libraries.items():
        files[f"meridek_felspar/libraries/{name}"] = library.read_bytes()
    info = f"meridek_felspar-{version()}.dist-info"
    files[f"{info}/LICENSE"] = (TREE / "LICENSE").read_bytes()
    files[f"{info}/THIRD_PARTY.md"] = third_party.encode()
    files[f"{info}/METADATA"] = metadata().encode()
    files[f"{info}/WHEEL"] = f"Wheel-Version: 1.0\nGenerator: felspar\nRoot-Is-Purelib: false\nTag: {tag}\n".encode()
    return files


def record_line(name: str, data: bytes) -> str:
    digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
    return f"{name},sha256={digest},{len(data)}\n"


def write(plugin: pathlib.Path, headless: pathlib.Path, third_party: str, folder: pathlib.Path) -> str:
    """Writes the wheel into an existing folder and returns its name, with the tag that the libraries bear out.

    Raises OSError, and ValueError for libraries that do not belong together and for other files.
    """
    libraries = {"reaper_MERIDEK_FELSPAR.so": plugin, "libfelspar_headless.so": headless}
    tag = f"py3-none-{abi.platform_tag(libraries.values())}"
    files = contents(libraries, third_party, tag)
    record = f"meridek_felspar-{version()}.dist-info/RECORD"
    lines = "".join(record_line(name, files[name]) for name in sorted(files))
    name = f"meridek_felspar-{version()}-{tag}.whl"
    with zipfile.ZipFile(folder / name, "w", zipfile.ZIP_DEFLATED) as wheel:
        for path, data in [*sorted(files.items()), (record, f"{lines}{record},,\n".encode())]:
            entry = zipfile.ZipInfo(path, EARLIEST)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o100644 << 16
            wheel.writestr(entry, data)
    return name


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    plugin_file, headless_file, licences, out = map(pathlib.Path, sys.argv[1:])
    try:
        print(out / write(plugin_file, headless_file, licences.read_text(encoding="utf-8"), out))
    except (OSError, ValueError) as error:
        sys.exit(f"wheel.py: {error}")
