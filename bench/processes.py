"""Whole processes and what they cost, for the comparison scripts."""

import dataclasses
import os
import subprocess
import sys
import time


@dataclasses.dataclass(frozen=True)
class Cost:
    processor_seconds: float = 0.0  # user and system
    wall_seconds: float = 0.0
    peak_mib: float = 0.0  # most memory that a process held

    def __add__(self, other):
        return Cost(
            self.processor_seconds + other.processor_seconds,
            self.wall_seconds + other.wall_seconds,
            max(self.peak_mib, other.peak_mib),
        )

    def times(self, factor):
        return Cost(self.processor_seconds * factor, self.wall_seconds * factor, self.peak_mib)


def cost_of(command, **options):
    """Runs a command to its end; what it prints goes nowhere, unless `options` of Popen say otherwise.

    Raises CalledProcessError when it fails.
    """
    options = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, **options}
    begin = time.monotonic()
    process = subprocess.Popen([str(word) for word in command], **options)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise subprocess.CalledProcessError(process.returncode, command[:3])
    unit = 2**20 if sys.platform == "darwin" else 2**10
    wall_seconds = time.monotonic() - begin
    return Cost(usage.ru_utime + usage.ru_stime, wall_seconds, usage.ru_maxrss / unit)
