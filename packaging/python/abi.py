"""What machine shared libraries are for, and the oldest system that can load them: the tag of a wheel."""

import os
import pathlib
import re
import subprocess
from typing import Iterable, Set, Tuple

MACHINES = {"Advanced Micro Devices X86-64": "x86_64", "AArch64": "aarch64"}
# Every Linux system with glibc has these, whatever its packages.
SYSTEM_LIBRARIES = {
    "ld-linux-aarch64.so.1",
    "ld-linux-x86-64.so.2",
    "libc.so.6",
    "libdl.so.2",
    "libgcc_s.so.1",
    "libm.so.6",
    "libpthread.so.0",
    "librt.so.1",
}
OLDEST_TESTED = (2, 31)  # glibc


class Needs:
    """What a shared library or a program asks of a system.

    Raises ValueError for a file that is neither, or for another machine.
    """

    def __init__(self, library: pathlib.Path) -> None:
        command = ["readelf", "--wide", "--file-header", "--dynamic", "--version-info", str(library)]
        environment = {"LC_ALL": "C", "PATH": os.environ["PATH"]}
        text = subprocess.run(command, capture_output=True, text=True, env=environment).stdout
        machine = re.search(r"Machine:\s+(.*\S)", text)
        if machine is None or machine[1] not in MACHINES:
            raise ValueError(f"{library} is no library for {' or '.join(MACHINES.values())}")
        self.machine = MACHINES[machine[1]]
        self.libraries: Set[str] = set(re.findall(r"\(NEEDED\).*\[(.*)\]", text))
        self.names_folders = bool(re.search(r"\((RPATH|RUNPATH)\)", text))  # in which to look for libraries
        needed_versions = text.partition("Version needs section")[2]
        self.glibc: Tuple[int, ...] = max(
            (tuple(map(int, version.split("."))) for version in re.findall(r"Name: GLIBC_([\d.]+)", needed_versions)),
            default=(0, 0),
        )


def platform_tag(libraries: Iterable[pathlib.Path]) -> str:
    """Returns the platform's part of a wheel's tag.

    It is "manylinux" if every system with the tag's glibc can load the libraries; else they need this system's own
    libraries, and the tag claims no more than the machine. Raises ValueError for libraries of different machines.
    """
    needs = [Needs(library) for library in libraries]
    machines = {need.machine for need in needs}
    if len(machines) != 1:
        raise ValueError(f"libraries for {', '.join(sorted(machines))} in one wheel")
    machine = machines.pop()
    if any(need.libraries - SYSTEM_LIBRARIES for need in needs):
        return f"linux_{machine}"
    glibc = max(OLDEST_TESTED, *(need.glibc[:2] for need in needs))
    return f"manylinux_{glibc[0]}_{glibc[1]}_{machine}"
