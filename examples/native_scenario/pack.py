"""Packs the files of a directory as a scenario package whose bytes depend on their content only, not on their times.

Usage: pack.py PACKAGE DIRECTORY FILE...
"""

import os
import sys
import zipfile


def pack(package: str, directory: str, names: list[str]) -> None:
    with zipfile.ZipFile(package, "w", zipfile.ZIP_DEFLATED) as archive:
        for name in names:
            with open(os.path.join(directory, name), "rb") as file:
                archive.writestr(zipfile.ZipInfo(name), file.read(), zipfile.ZIP_DEFLATED)


pack(sys.argv[1], sys.argv[2], sys.argv[3:])
