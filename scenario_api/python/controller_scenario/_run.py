"""Runs a scenario with the job that this process was started for."""

from __future__ import annotations

import io
import sys
from collections.abc import Callable, Sequence
from typing import NoReturn, Optional

from . import _run_info, _text
from ._ending import Cancelled, Failure
from ._job import Job
from ._layout import EXIT_CANCELLED, EXIT_FAILED, EXIT_NO_RUN_INFO, EXIT_SUCCESS
from ._stop_request import StopRequest

Scenario = Callable[[Job], object]


def run(scenario: Scenario, arguments: Optional[Sequence[str]] = None) -> NoReturn:
    """Calls `scenario` with the job of this process, and ends the process.

    A normal return is success; `Job.fail` and exceptions end the job as failed; a request to stop ends it quietly.
    Standard output is unbuffered: what was printed before a sudden end is in the log.
    `arguments`: those of the command line if not given.
    Exit code: 0 success, 1 failed, 2 the run information could not be read, 3 cancelled.
    """
    for stream in (sys.stdout, sys.stderr):
        _make_robust(stream)
    sys.exit(execute(scenario, arguments))


def execute(scenario: Scenario, arguments: Optional[Sequence[str]] = None) -> int:
    """The same without ending the process: returns the exit code."""
    try:
        info = _run_info.read(_run_info.locate(sys.argv[1:] if arguments is None else arguments))
    except _run_info.Unusable as error:
        print(f"controller_scenario: {_text.scrub(str(error))}", file=sys.stderr)
        return EXIT_NO_RUN_INFO
    stop_request = StopRequest(info.work_dir)
    with stop_request.listening():
        stop_request.tell_when_early()
        job = Job(info, stop_request)
        job.result.discard_earlier()
        return _finish(job, scenario)


def _make_robust(stream: object) -> None:
    """Printing must not fail a job: a name may hold characters that the stream cannot represent."""
    if isinstance(stream, io.TextIOWrapper):
        is_strict = stream.errors == "strict"
        stream.reconfigure(write_through=True, errors="backslashreplace" if is_strict else stream.errors)


def _finish(job: Job, scenario: Scenario) -> int:
    exit_code = _attempt(job, scenario)
    job.used_tools.write()
    try:
        if exit_code != EXIT_CANCELLED:
            job.result.write()
    except OSError as error:
        reason = _text.of_system_error(error)
        print(f"controller_scenario: the result could not be written: {reason}", file=sys.stderr)
        return EXIT_FAILED
    return exit_code


def _attempt(job: Job, scenario: Scenario) -> int:
    try:
        scenario(job)
    except (Cancelled, KeyboardInterrupt):
        return EXIT_CANCELLED
    except Failure as failure:
        return _record_failure(job, str(failure), failure.code)
    except SystemExit as end:
        return _record_exit(job, end.code)
    except Exception as error:
        import traceback  # only here: a scenario should start quickly

        traceback.print_exc()
        return _record_failure(job, _text.describe(error), EXIT_FAILED)
    return EXIT_SUCCESS


def _record_exit(job: Job, code: object) -> int:
    """As Python itself understands the argument of sys.exit: nothing is 0, a text is printed and means 1."""
    if code is None or code == 0:
        return EXIT_SUCCESS
    if not isinstance(code, int):
        print(code, file=sys.stderr)
        code = EXIT_FAILED
    return _record_failure(job, f"The scenario ended with exit code {int(code)}.", int(code))


def _record_failure(job: Job, text: str, code: int) -> int:
    """A scenario that was asked to stop often fails of it (a closed pipe, a child that ended). That is no failure."""
    if job.cancelled:
        return EXIT_CANCELLED
    job.result.fail(text, code)
    return EXIT_FAILED
