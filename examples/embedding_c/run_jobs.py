"""A Python program with a job engine of its own: runs one scenario on each input file and shows the progress.

Usage: run_jobs.py SETTINGS_FILE SCENARIO OUTPUT_DIRECTORY INPUT...
"""

import os
import sys

from controller_engine import Document, Engine, EngineError


def jobs_file(scenario: str, output: str, inputs: list[str]) -> Document:
    sets = [[os.path.abspath(path)] for path in inputs]
    request = {"scenario": {"id": scenario}, "outputDir": os.path.abspath(output), "inputFileSets": sets}
    return {"EnqueueJobs": [request]}


def run(settings: str, scenario: str, output: str, inputs: list[str]) -> bool:
    with Engine(settings) as engine:
        added = engine.enqueue(jobs_file(scenario, output, inputs))
        for job in added:
            if "reason" in job:
                print(f"Rejected: {job['reason']}")
        numbers = ",".join(str(job["number"]) for job in added if job["id"])
        if not numbers:
            return False
        while any(job["status"] in ("Queued", "Running", "Canceling") for job in engine.wait(numbers, seconds=0.2)):
            for job in engine.step():
                print(f"Job {job['number']}: {job['status']} {job['progress']} % {job['message']}")
        jobs = engine.status(numbers)
        for job in jobs:
            print(
                f"Job {job['number']}: {job['status']}, results in {job['outputFolder']}: {', '.join(job['messages'])}"
            )
        return len(jobs) == len(inputs) and all(job["status"] == "Success" for job in jobs)


if __name__ == "__main__":
    if len(sys.argv) < 5:
        sys.exit("Usage: run_jobs.py SETTINGS_FILE SCENARIO OUTPUT_DIRECTORY INPUT...")
    try:
        sys.exit(0 if run(sys.argv[1], sys.argv[2], sys.argv[3], sys.argv[4:]) else 1)
    except EngineError as problem:
        sys.exit(f"run_jobs.py: {problem}")
