"""The tools and files that the results depend on beside the inputs, for used_tools.json."""

from __future__ import annotations

import os
import sys
from collections.abc import Iterator

from . import _atomic_file, _layout, _text

FILE_NAME = "used_tools.json"

# The controller refuses a longer list.
LIMIT = 1000

# Directories below that of the standard library whose packages are not part of it.
_ADDED_PACKAGES = ("site-packages", "dist-packages")


class UsedTools:
    """Collects the report until the scenario ends."""

    def __init__(self, work_dir: str) -> None:
        self._work_dir = work_dir
        self._versions = {"python": sys.version.split()[0]}
        # As keys: each once, in the order in which they came.
        self._files: dict[str, None] = {}

    def add_version(self, name: object, version: object) -> None:
        """Notes the version of a tool; the last one of a name counts."""
        if len(self._versions) == LIMIT and str(name) not in self._versions:
            raise ValueError(f"more than {LIMIT} tools")
        self._versions[str(name)] = str(version)

    def add_file(self, path: str) -> None:
        """Notes a file that the results depend on and that is no input."""
        self._files[os.path.abspath(path)] = None

    def write(self) -> None:
        """Writes the file. A report is a courtesy to later jobs: without it the result of this one stands."""
        try:
            _atomic_file.write(os.path.join(self._work_dir, FILE_NAME), _layout.generate(self._content()))
        except OSError as error:
            print(
                f"controller_scenario: the used tools could not be written: {_text.of_system_error(error)}",
                file=sys.stderr,
            )

    def _content(self) -> dict[str, object]:
        tools = [{"name": _text.clean(name), "version": _text.clean(text)} for name, text in self._versions.items()]
        files = {**self._files, **dict.fromkeys(self._loaded_files())}
        return {"version": _layout.LAYOUT_VERSION, "tools": tools, "files": [_text.clean(path) for path in files]}

    def _loaded_files(self) -> Iterator[str]:
        """The files of the loaded modules, without the script, those of Python itself and those of its own package."""
        own = os.path.join(os.path.abspath(self._work_dir), "")
        for name, module in list(sys.modules.items()):
            # Not an attribute, which a module may compute: that could load further modules.
            path = getattr(module, "__dict__", {}).get("__file__")
            if name == "__main__" or not isinstance(path, str):
                continue
            path = os.path.abspath(path)
            if os.path.isfile(path) and not path.startswith(own) and not _is_of_python(path):
                yield path


def _is_of_python(path: str) -> bool:
    library = os.path.dirname(os.path.abspath(os.__file__))
    if path.startswith(tuple(os.path.join(library, name, "") for name in _ADDED_PACKAGES)):
        return False
    modules_of_windows = os.path.join(sys.base_exec_prefix, "DLLs")
    return path.startswith((os.path.join(library, ""), os.path.join(modules_of_windows, "")))
