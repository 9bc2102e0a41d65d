"""Replaces a file so that a reader sees the old or the new content, never a part of it."""

from __future__ import annotations

import contextlib
import os
import time

# On Windows a file that somebody holds open cannot be replaced; scanners and readers let go within milliseconds.
RENAME_ATTEMPTS = 200
PAUSE_SECONDS = 0.005


def write(path: str, content: bytes, *, durable: bool = False) -> None:
    """Writes `content` to `path` by way of a temporary file in the same directory.

    With `durable` the content has reached the disk when this returns.
    Raises OSError on failure; `path` is then as it was and the temporary file gone.
    """
    temporary = _temporary_path(path)
    try:
        with open(temporary, "wb") as file:
            file.write(content)
            if durable:
                file.flush()
                os.fsync(file.fileno())
        _replace(temporary, path)
    except OSError:
        with contextlib.suppress(OSError):  # it was never made, or its directory is gone
            os.unlink(temporary)
        raise


def _replace(temporary: str, path: str) -> None:
    """Renames again and again for a bounded time while access to `path` is refused."""
    for _ in range(RENAME_ATTEMPTS - 1):
        try:
            os.replace(temporary, path)
            return
        except PermissionError:
            time.sleep(PAUSE_SECONDS)
    os.replace(temporary, path)


def _temporary_path(path: str) -> str:
    directory, name = os.path.split(path)
    return os.path.join(directory, f".{name}.{os.getpid()}.tmp")
