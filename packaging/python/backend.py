"""Builds the wheel for `pip install .` and `pip wheel .`: the hooks of PEP 517."""

import pathlib
import shutil
import subprocess
import tempfile
from typing import Any, List

import wheel

TREE = wheel.TREE
BUILD = TREE / "build" / "wheel"
NEEDS = "cmake, a C++20 compiler and the packages that tools/setup.sh lists as build_needs"


def _run(*command: object) -> str:
    return subprocess.run(list(map(str, command)), check=True, cwd=TREE, stdout=subprocess.PIPE, text=True).stdout


def _built_libraries(prefix: pathlib.Path) -> pathlib.Path:
    """Builds both libraries, installs them stripped below `prefix`, and returns their folder."""
    if shutil.which("cmake") is None:
        raise RuntimeError(f"building needs {NEEDS}")
    generator = ["-G", "Ninja"] if shutil.which("ninja") else []
    options = ["-DCMAKE_BUILD_TYPE=Release", "-DFELSPAR_TESTS=OFF", "-DFELSPAR_BENCH=OFF"]
    try:
        _run("cmake", "-S", TREE, "-B", BUILD, *generator, *options)
        _run("cmake", "--build", BUILD, "--parallel", "--target", "plugin", "felspar_headless")
    except subprocess.CalledProcessError as error:
        raise RuntimeError(f"building the libraries failed; it needs {NEEDS}") from error
    _run("cmake", "--install", BUILD, "--prefix", prefix, "--strip", "--component", "libraries")
    return prefix / "lib" / "felspar"


def build_wheel(wheel_directory: str, config_settings: Any = None, metadata_directory: Any = None) -> str:
    with tempfile.TemporaryDirectory() as scratch:
        libraries = _built_libraries(pathlib.Path(scratch))
        plugin = libraries / "libreaper_MERIDEK_FELSPAR_for_6.x.so"
        licences = _run(TREE / "packaging" / "licences")
        return wheel.write(plugin, libraries / "libfelspar_headless.so", licences, pathlib.Path(wheel_directory))


def build_sdist(sdist_directory: str, config_settings: Any = None) -> str:
    """The sources of a release are the tag in git."""
    raise NotImplementedError("there is no source distribution: clone the repository")


def get_requires_for_build_wheel(config_settings: Any = None) -> List[str]:
    return []
