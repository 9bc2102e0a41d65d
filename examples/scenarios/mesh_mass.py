"""Mass and centre of mass of parts: mass.csv has a row for each STL file.

Parameters: "density" in kg/m3, and "unit", the length that 1 stands for in the files; mesh_mass.scenario.json offers
steel, aluminium and printed plastic.
"""

from __future__ import annotations

import os
import re
import struct
from collections import Counter
from collections.abc import Iterator

from controller_scenario import Job, run

Point = tuple[float, float, float]
Triangle = tuple[Point, Point, Point]

METRES = {"mm": 0.001, "cm": 0.01, "m": 1.0, "inch": 0.0254}
HEADER_BYTES = 84
TRIANGLE_BYTES = 50
STEP = 10_000
VERTEX = re.compile(rb"vertex\s+(\S+)\s+(\S+)\s+(\S+)")


class Unusable(Exception):
    """The file is not a closed mesh; the text says why and what can be done."""


def binary_triangles(content: bytes) -> list[Triangle]:
    values = struct.iter_unpack("<12f2x", content[HEADER_BYTES:])
    return [((v[3], v[4], v[5]), (v[6], v[7], v[8]), (v[9], v[10], v[11])) for v in values]


def ascii_triangles(content: bytes) -> list[Triangle]:
    corners = [(float(x), float(y), float(z)) for x, y, z in VERTEX.findall(content)]
    return list(zip(corners[0::3], corners[1::3], corners[2::3]))


def read(path: str) -> list[Triangle]:
    name = os.path.basename(path)
    with open(path, "rb") as file:
        content = file.read()
    announced = struct.unpack_from("<I", content, HEADER_BYTES - 4)[0] if len(content) >= HEADER_BYTES else -1
    if announced >= 0 and len(content) == HEADER_BYTES + announced * TRIANGLE_BYTES:
        return binary_triangles(content)
    if not content.lstrip().startswith(b"solid") or not content.rstrip().split(b"\n")[-1].strip().startswith(
        b"endsolid"
    ):
        raise Unusable(f"{name} is no STL file, or it is cut off; export the part again.")
    try:
        return ascii_triangles(content)
    except ValueError as error:
        raise Unusable(f"{name} has a coordinate that is no number: {error}") from error


def edges(triangle: Triangle) -> Iterator[tuple[Point, Point]]:
    first, second, third = triangle
    yield from ((first, second), (second, third), (third, first))


def check_closed(name: str, triangles: list[Triangle]) -> None:
    """Each edge of a closed mesh is passed once in each direction."""
    count = Counter(edge for triangle in triangles for edge in edges(triangle))
    open_edges = sum((count - Counter((end, start) for start, end in count.elements())).values())
    if open_edges or not triangles:
        raise Unusable(
            f"{name} is not closed ({open_edges} open edges), so that it has no mass; repair the mesh first."
        )


def volume_and_centre(job: Job, name: str, triangles: list[Triangle]) -> tuple[float, Point]:
    """Adds up the tetrahedra between the origin and each triangle, in the file's unit."""
    volume, x, y, z = 0.0, 0.0, 0.0, 0.0
    for index, (a, b, c) in enumerate(triangles):
        if index % STEP == 0:
            job.stop_if_cancelled()
        part = (
            a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) + a[2] * (b[0] * c[1] - b[1] * c[0])
        ) / 6
        volume += part
        x += part * (a[0] + b[0] + c[0]) / 4
        y += part * (a[1] + b[1] + c[1]) / 4
        z += part * (a[2] + b[2] + c[2]) / 4
    if volume == 0:
        raise Unusable(f"{name} has no volume, and therefore no mass; export the part again.")
    return volume, (x / volume, y / volume, z / volume)


def row(job: Job, path: str, density: float, metres: float) -> str:
    name = os.path.basename(path)
    triangles = read(path)
    check_closed(name, triangles)
    volume, centre = volume_and_centre(job, name, triangles)
    kilograms = abs(volume) * metres**3 * density
    job.message(f"{name}: {kilograms:.4g} kg")
    return ";".join([name, *(f"{value:.6g}" for value in (kilograms, *centre))])


def mass(job: Job) -> None:
    parameters = job.parameters()
    density, metres = float(parameters["density"]), METRES[str(parameters["unit"])]
    if not job.inputs:
        job.fail("No input file was given; choose one STL file or more.")
    if density <= 0:
        job.fail(f"The density is {density:g} kg/m3; choose one above 0.")
    rows = ["file;mass [kg];x;y;z"]
    for index, path in enumerate(job.inputs):
        job.progress(100 * index / len(job.inputs), f"Reading {os.path.basename(path)}")
        try:
            rows.append(row(job, path, density, metres))
        except Unusable as error:
            job.fail(str(error))
    job.write_output("mass.csv", "\n".join(rows) + "\n")


run(mass)
