"""The job controller's API for scenarios written in Python.

    from controller_scenario import Job, run

    def report(job: Job) -> None:
        for index, path in enumerate(job.inputs):
            job.progress(100 * index / len(job.inputs), f"Reading {os.path.basename(path)}")
            if os.path.getsize(path) == 0:
                job.fail(f"{os.path.basename(path)} is empty")
        job.write_output("report.txt", f"{len(job.inputs)} files\\n")

    run(report)

Needs Python 3.9 or later and nothing beyond its standard library. docs/writing-scenarios.md describes the API for
scenario authors, docs/work-directory-files.md the files behind it.
"""

from ._ending import Cancelled, Failure
from ._job import Job
from ._layout import EXIT_CANCELLED, EXIT_FAILED, EXIT_NO_RUN_INFO, EXIT_SUCCESS, LAYOUT_VERSION
from ._parameters import ParameterValue
from ._run import Scenario, execute, run

__all__ = [
    "Cancelled",
    "EXIT_CANCELLED",
    "EXIT_FAILED",
    "EXIT_NO_RUN_INFO",
    "EXIT_SUCCESS",
    "Failure",
    "Job",
    "LAYOUT_VERSION",
    "ParameterValue",
    "Scenario",
    "execute",
    "run",
]
