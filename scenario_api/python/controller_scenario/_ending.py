"""The exceptions that end a scenario."""

from __future__ import annotations

from ._layout import EXIT_FAILED


class Failure(Exception):
    """Ends the job as failed, with this message and without a trace. Raised by `Job.fail`."""

    def __init__(self, message: str, code: int = EXIT_FAILED) -> None:
        super().__init__(message)
        self.code = code


class Cancelled(BaseException):
    """Unwinds a scenario that was asked to stop.

    Not an Exception, so that a scenario's own "except Exception" lets it pass.
    """

    def __init__(self, message: str = "The job was cancelled.") -> None:
        super().__init__(message)
