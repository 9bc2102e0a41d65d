"""Texts between Python and the controller's files."""

from __future__ import annotations

import re

# Characters of one message; the rest is cut off.
LIMIT = 2000

_SURROGATES = re.compile("[\ud800-\udfff]")


def scrub(text: str) -> str:
    """The text with each lone surrogate replaced; they stand for bytes of names that are not valid UTF-8."""
    return _SURROGATES.sub("\ufffd", text)


def clean(text: object) -> str:
    """A text of limited length that UTF-8 can represent, whatever it was made from."""
    decoded = text.decode("utf-8", "replace") if isinstance(text, (bytes, bytearray)) else str(text)
    cleaned = scrub(decoded)
    return cleaned if len(cleaned) <= LIMIT else cleaned[: LIMIT - 1] + "\u2026"


def of_system_error(error: OSError) -> str:
    """What the system says, and about which file."""
    if error.strerror is None:
        return str(error)
    if error.filename is None:
        return error.strerror
    names = error.filename if error.filename2 is None else f"({error.filename}, {error.filename2})"
    return f"{error.strerror}: {names}"


def describe(error: Exception) -> str:
    """One line for a person who does not know Python; the class only where the message alone is hard to understand."""
    message = clean(of_system_error(error) if isinstance(error, OSError) else error).strip()
    name = type(error).__name__
    if not message:
        return name
    is_plain = type(error) in (Exception, RuntimeError) or isinstance(error, OSError) or name in message
    return message if is_plain else f"{message} ({name})"
