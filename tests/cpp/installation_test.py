#!/usr/bin/env python3
"""Installs the build, compiles every installed header, and builds and runs the example program against it.

Usage: installation_test.py CMAKE BUILD EXAMPLE
"""
import array
import math
import pathlib
import subprocess
import sys
import tempfile
import wave

cmake, build, example = sys.argv[1:]

HEADERS = """
file(GLOB_RECURSE headers RELATIVE {include} {include}/*.hpp)
set(source ${{CMAKE_CURRENT_BINARY_DIR}}/every_header.cpp)
list(TRANSFORM headers REPLACE "(.+)" "#include \\"\\\\1\\"\\n")
file(WRITE ${{source}} ${{headers}})
find_package(PkgConfig REQUIRED)
pkg_check_modules(lua REQUIRED IMPORTED_TARGET lua5.3)
add_library(every_header OBJECT ${{source}})
target_link_libraries(every_header meridek_felspar::meridek_felspar PkgConfig::lua)
target_compile_options(every_header PRIVATE -Wall -Wextra -Wpedantic -Werror)
set_target_properties(every_header PROPERTIES NO_SYSTEM_FROM_IMPORTED ON)
"""

EXPECTED = """\
library 1.1.0, bound, 105 functions for scripts
3 files, 6 items, 0 lines without a partner
[Session] Imported fr.
track 0 "None", -6.0 dB
  track 1 "base", muted, -6.0 dB
  track 2 "unique", -6.0 dB
track 3 "door", -6.0 dB
  track 4 "base", muted, -6.0 dB
  track 5 "unique", -6.0 dB
hello rendered
hello: 1.50 s, 1500 levels, highest -20.0 dB
momentary maximum -15.0 LUFS, ridden -15.0 LUFS in 1 take
functions of the extension found
region 1 to 14.00 s, cursor at 0.0 s
2 records, 1 in the pool of notes
released: door_1 again, too close
0 in the pool of notes
session.rpp {"string":"File"}
"""


def run(*command, **options):
    done = subprocess.run(command, capture_output=True, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"{command} failed\n{done.stdout}{done.stderr}")
    return done.stdout


def write_tone(file, level_db, rate=8000, seconds=1.5):
    file.parent.mkdir(exist_ok=True)
    amplitude = 32767 * 10 ** (level_db / 20)
    samples = [round(amplitude * math.sin(math.pi * n / 4)) for n in range(int(rate * seconds))]
    with wave.open(str(file), "wb") as out:
        out.setparams((1, 2, rate, 0, "NONE", ""))
        out.writeframes(array.array("h", samples).tobytes())


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    prefix = folder / "prefix"
    run(cmake, "--install", build, "--prefix", prefix)

    project = folder / "project"
    project.mkdir()
    text = (pathlib.Path(example) / "CMakeLists.txt").read_text().replace("dialogue_session.cpp",
                                                                          f"{example}/dialogue_session.cpp")
    (project / "CMakeLists.txt").write_text(text + HEADERS.format(include=prefix / "include/meridek_felspar"))
    run(cmake, "-S", project, "-B", folder / "build", f"-DCMAKE_PREFIX_PATH={prefix}")
    run(cmake, "--build", folder / "build")

    for line in ("door_1", "door_2", "hello"):
        write_tone(folder / "fr" / f"{line}.wav", -20)
        write_tone(folder / "en" / f"{line}.wav", -12)
    shown = run(folder / "build/dialogue_session", "fr", "en", "session.rpp", cwd=folder)
    if shown != EXPECTED:
        sys.exit(f"the program shows\n{shown}and not\n{EXPECTED}")
