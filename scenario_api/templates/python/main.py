"""@NAME@: lists the sizes of its input files. Say here what yours does, and what its parameters mean."""

from __future__ import annotations

import os

from controller_scenario import Job, run


def work(job: Job) -> None:
    smallest = int(job.parameters()["smallestSize"])
    if not job.inputs:
        job.fail("No input file was given; choose one file or more.")

    rows = []
    for index, path in enumerate(job.inputs):
        name = os.path.basename(path)
        job.progress(100 * index / len(job.inputs), f"Reading {name}")  # also ends a job that was cancelled
        size = os.path.getsize(path)
        if size < smallest:
            job.fail(f"{name} has {size} bytes; {smallest} or more are needed.")
        rows.append(f"{name}: {size} bytes\n")

    job.write_output("report.txt", "".join(rows))
    job.message(f"Files: {len(rows)}")


run(work)
