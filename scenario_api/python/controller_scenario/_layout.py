"""What the files in a job's work directory and the exit code of a scenario have in common."""

from __future__ import annotations

import json
from typing import Any

# Version of the layout of every file in a job's work directory.
LAYOUT_VERSION = 1

# What the scenario's process ends with.
EXIT_SUCCESS = 0
EXIT_FAILED = 1
EXIT_NO_RUN_INFO = 2
EXIT_CANCELLED = 3

# A file with more levels of nesting is refused.
_NESTING_LIMIT = 64


def generate(content: object) -> bytes:
    """The content as compact JSON in UTF-8. All texts must be free of lone surrogates (`_text.clean`)."""
    return json.dumps(content, ensure_ascii=False, separators=(",", ":")).encode("utf-8")


def parse(content: bytes) -> Any:
    """Parses strict JSON in UTF-8, with or without a byte order mark. Raises ValueError."""
    try:
        value = json.loads(content.decode("utf-8-sig"), parse_constant=_refuse_constant)
    except RecursionError:
        raise _too_deep() from None
    _check_nesting(value)
    return value


def _refuse_constant(name: str) -> None:
    raise ValueError(f"unexpected {name}")


def _too_deep() -> ValueError:
    return ValueError(f"more than {_NESTING_LIMIT} levels of nesting")


def _check_nesting(value: object) -> None:
    level = [value]
    depth = 0
    while level:
        containers = [element for element in level if isinstance(element, (dict, list))]
        depth += 1
        if containers and depth > _NESTING_LIMIT:
            raise _too_deep()
        level = [child for element in containers for child in _children(element)]


def _children(container: dict[str, object] | list[object]) -> list[object]:
    return list(container.values()) if isinstance(container, dict) else container
