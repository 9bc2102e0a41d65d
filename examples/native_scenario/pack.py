"""Packs a directory as a scenario package whose bytes depend on its files only, not on their times.

Usage: pack.py PACKAGE DIRECTORY
"""

import sys
import zipfile
from pathlib import Path


def pack(package: str, directory: Path) -> None:
    with zipfile.ZipFile(package, "w", zipfile.ZIP_DEFLATED) as archive:
        for path in sorted(path for path in directory.rglob("*") if path.is_file()):
            name = path.relative_to(directory).as_posix()
            archive.writestr(zipfile.ZipInfo(name), path.read_bytes(), zipfile.ZIP_DEFLATED)


pack(sys.argv[1], Path(sys.argv[2]))
