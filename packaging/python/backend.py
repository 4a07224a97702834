"""Builds the wheel for `pip install .` and `pip wheel .`: the hooks of PEP 517."""

import pathlib
import shutil
import subprocess
import sys
import tempfile
from typing import Any, List

if sys.version_info < (3, 11):
    raise RuntimeError("building needs Python 3.11 or later; the wheel serves 3.8 and later")

import wheel  # noqa: E402

TREE = wheel.TREE
BUILD = TREE / "build" / "wheel"
NEEDS = "cmake, a C++20 compiler and the packages that tools/setup.sh lists as build_needs"


class UnsupportedOperation(Exception):
    """What PEP 517 has a backend raise that makes no source distribution."""


def _cmake(*words: object) -> None:
    """Runs it. What it prints, pip shows with its own messages."""
    try:
        subprocess.run(["cmake", *map(str, words)], check=True, cwd=TREE, stdout=sys.stderr)
    except subprocess.CalledProcessError as error:
        raise RuntimeError(f"building the libraries failed; it needs {NEEDS}") from error


def _licences() -> str:
    script = TREE / "packaging" / "licences"
    done = subprocess.run([script], cwd=TREE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, encoding="utf-8")
    if done.returncode != 0:
        raise RuntimeError(f"the licences of what the wheel contains are not to be had: {done.stderr.strip()}")
    return done.stdout


def _built_libraries(prefix: pathlib.Path) -> pathlib.Path:
    """Builds both libraries, installs them stripped below `prefix`, and returns their folder."""
    if shutil.which("cmake") is None:
        raise RuntimeError(f"building needs {NEEDS}")
    generator = ["-G", "Ninja"] if shutil.which("ninja") else []
    options = ["-DCMAKE_BUILD_TYPE=Release", "-DFELSPAR_TESTS=OFF", "-DFELSPAR_BENCH=OFF"]
    _cmake("-S", TREE, "-B", BUILD, *generator, *options)
    _cmake("--build", BUILD, "--parallel", "--target", "plugin", "felspar_headless")
    _cmake("--install", BUILD, "--prefix", prefix, "--strip", "--component", "libraries")
    return prefix / "lib" / "felspar"


def build_wheel(wheel_directory: str, config_settings: Any = None, metadata_directory: Any = None) -> str:
    licences = _licences()  # first, as the build takes minutes
    with tempfile.TemporaryDirectory() as scratch:
        libraries = _built_libraries(pathlib.Path(scratch))
        plugin = libraries / "libreaper_MERIDEK_FELSPAR_for_6.x.so"
        return wheel.write(plugin, libraries / "libfelspar_headless.so", licences, pathlib.Path(wheel_directory))


def build_sdist(sdist_directory: str, config_settings: Any = None) -> str:
    """The sources of a release are the tag in git."""
    raise UnsupportedOperation("there is no source distribution: clone the repository")


def get_requires_for_build_wheel(config_settings: Any = None) -> List[str]:
    return []
