"""`python -m meridek_felspar --version`: the release, and the library that is used."""

import argparse
import sys

from ._library import library_path, version
from .errors import FelsparError


def main() -> int:
    parser = argparse.ArgumentParser(prog="python -m meridek_felspar", description=__doc__)
    parser.add_argument("--version", action="store_true", required=True, help="print the version and the library's place")
    parser.parse_args()
    try:
        print(f"meridek_felspar {version()}, library {library_path()}")
    except FelsparError as error:
        print(f"meridek_felspar: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
