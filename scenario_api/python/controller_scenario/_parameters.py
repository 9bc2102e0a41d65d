"""Reads the user's choice out of a run argument such as

    fine                      the parameter set "fine" with its default values
    fine size=320             the same with another value for "size"
    size=320                  the first parameter set with another value
    title="Left bracket"      values with blanks are in double quotes
    title="3"" pipe"          a double quote inside is written twice

Parameter sets are in "SCRIPT.scenario.json" beside a script or in a package's "manifest.json". Without such a file
each name=value is a text.
"""

from __future__ import annotations

import os
import re
from typing import Any, Union

from . import _layout, _text
from ._ending import Failure

ParameterValue = Union[int, float, bool, str]

SIZE_LIMIT = 4 * 1024 * 1024

_QUOTED = '"(?:[^"]|"")*"'
_WORD = re.compile(rf'(?:[^ \t\r\n\f\v"]|{_QUOTED})+')
_INTEGER = re.compile("[+-]?[0-9]+")
_NUMBER = re.compile(r"[+-]?(?:[0-9]+(?:\.[0-9]+)?|\.[0-9]+)(?:[eE][+-]?[0-9]+)?")


def choose(run_argument: str, description_path: str | None) -> dict[str, ParameterValue]:
    """The values by name, each in its parameter's type: "integer", "number" and "boolean" become int, float and bool,
    every other type stays a str. Raises Failure with a text for the user if the choice is wrong."""
    return _Choice(_read_sets(description_path)).choose(_text.scrub(run_argument))


def file_beside(script: str) -> str | None:
    """The file with the parameter sets of `script`, if there is one."""
    directory, name = os.path.split(os.path.abspath(script))
    names = (f"{os.path.splitext(name)[0]}.scenario.json", "manifest.json")
    return next((path for path in (os.path.join(directory, name) for name in names) if os.path.isfile(path)), None)


def _read_sets(path: str | None) -> list[dict[str, Any]]:
    if path is None:
        return []
    try:
        if os.path.getsize(path) > SIZE_LIMIT:
            raise Failure(f"{path} is larger than {SIZE_LIMIT} bytes.")
        with open(path, "rb") as file:
            return _sets_of(_layout.parse(file.read()))
    except OSError as error:
        raise Failure(f"The parameter sets in {path} cannot be read: {_text.of_system_error(error)}") from error
    except ValueError as error:
        raise Failure(f"The parameter sets in {path} cannot be read: {error}") from error


def _sets_of(description: Any) -> list[dict[str, Any]]:
    if not isinstance(description, dict):
        raise ValueError("expected an object")
    sets = description.get("parameterSets", [])
    if not _is_list_of_objects(sets):
        raise ValueError("parameterSets: expected a list of objects")
    for parameter_set in sets:
        if not _is_list_of_objects(parameter_set.setdefault("parameters", [])):
            raise ValueError("parameters: expected a list of objects")
    return list(sets)


def _is_list_of_objects(value: object) -> bool:
    return isinstance(value, list) and all(isinstance(element, dict) for element in value)


class _Choice:
    def __init__(self, sets: list[dict[str, Any]]) -> None:
        self._sets = sets

    def choose(self, run_argument: str) -> dict[str, ParameterValue]:
        words = _split_words(run_argument)
        parameter_set = self._sets[0] if self._sets else None
        if words and "=" not in words[0]:
            parameter_set = self._find_set(words.pop(0))
        given = _to_values([_split_pair(word) for word in words])
        return dict(given) if parameter_set is None else _complete(parameter_set["parameters"], given)

    def _find_set(self, identifier: str) -> dict[str, Any]:
        for parameter_set in self._sets:
            if parameter_set.get("id") == identifier:
                return parameter_set
        known = _list(self._sets, "id")
        raise Failure(f'The run argument names the parameter set "{identifier}"; known are: {known}.')


def _split_words(run_argument: str) -> list[str]:
    if '"' in _WORD.sub("", run_argument):
        raise Failure(
            f"The run argument {run_argument} has a double quote that is not closed; inside of quotes one is written "
            "twice."
        )
    return _WORD.findall(run_argument)


def _split_pair(word: str) -> tuple[str, str]:
    name, separator, value = word.partition("=")
    if not separator or not name:
        raise Failure(f'The run argument holds "{word}"; expected name=value.')
    return name, re.sub(_QUOTED, lambda quoted: quoted[0][1:-1].replace('""', '"'), value)


def _to_values(pairs: list[tuple[str, str]]) -> dict[str, str]:
    names = [name for name, _ in pairs]
    for name in names:
        if names.count(name) > 1:
            raise Failure(f'The run argument names the parameter "{name}" {names.count(name)} times.')
    return dict(pairs)


def _complete(parameters: list[dict[str, Any]], given: dict[str, str]) -> dict[str, ParameterValue]:
    known = [parameter.get("name") for parameter in parameters]
    for name in given:
        if name not in known:
            raise Failure(f'The run argument names the parameter "{name}"; known are: {_list(parameters, "name")}.')
    return {str(parameter.get("name")): _value_of(parameter, given) for parameter in parameters}


def _value_of(parameter: dict[str, Any], given: dict[str, str]) -> ParameterValue:
    text = given.get(parameter.get("name", ""), parameter.get("defaultValue"))
    text = "" if text is None else str(text)
    allowed = parameter.get("allowedValues") or []
    if allowed and text not in allowed:
        raise Failure(f'The parameter "{parameter.get("name")}" is "{text}"; allowed are: {", ".join(allowed)}.')
    return _convert(parameter, text)


def _convert(parameter: dict[str, Any], text: str) -> ParameterValue:
    kind = parameter.get("type")
    if kind == "integer" and _INTEGER.fullmatch(text):
        return int(text)
    if kind == "number" and _NUMBER.fullmatch(text):
        return float(text)
    if kind == "boolean" and text in ("true", "false"):
        return text == "true"
    if kind in ("integer", "number", "boolean"):
        raise Failure(f'The parameter "{parameter.get("name")}" is "{text}"; expected type {kind}.')
    return text


def _list(elements: list[dict[str, Any]], member: str) -> str:
    return ", ".join(str(element.get(member, "")) for element in elements) or "none"
