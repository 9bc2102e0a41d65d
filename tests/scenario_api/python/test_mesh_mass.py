"""The example scenario mesh_mass.py, in a process of its own."""

from __future__ import annotations

import json
import os
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any

PROJECT = Path(__file__).parents[3]
SCENARIO = PROJECT / "examples" / "scenarios" / "mesh_mass.py"

Point = tuple[float, float, float]


def box(low: Point, high: Point) -> list[tuple[Point, ...]]:
    """The triangles of a box, seen from outside against the clock."""
    x, y, z = zip(low, high)
    corners = [(x[i & 1], y[i >> 1 & 1], z[i >> 2 & 1]) for i in range(8)]
    sides = ((0, 2, 3, 1), (4, 5, 7, 6), (0, 1, 5, 4), (2, 6, 7, 3), (0, 4, 6, 2), (1, 3, 7, 5))
    quads = [[corners[i] for i in side] for side in sides]
    return [triangle for a, b, c, d in quads for triangle in ((a, b, c), (a, c, d))]


def binary(triangles: list[tuple[Point, ...]]) -> bytes:
    rows = [struct.pack("<12fH", 0, 0, 0, *(value for point in corners for value in point), 0) for corners in triangles]
    return bytes(80) + struct.pack("<I", len(rows)) + b"".join(rows)


class MeshMassTest(unittest.TestCase):
    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)

    def run_scenario(self, argument: str, **inputs: bytes) -> int:
        paths = [self.directory / f"{name}.stl" for name in inputs]
        for path, content in zip(paths, inputs.values()):
            path.write_bytes(content)
        info = self.directory / "run_scenario_info.json"
        request = {"inputFiles": [str(path) for path in paths], "runArgument": argument, "workDir": str(self.directory)}
        info.write_text(json.dumps({**request, "outputFolder": str(self.directory / "out")}))
        # The package is found as by this test.
        environment = {**os.environ, "PYTHONPATH": os.pathsep.join(sys.path)}
        return subprocess.run([sys.executable, SCENARIO, info], env=environment, timeout=60).returncode

    def texts(self) -> list[Any]:
        result = json.loads((self.directory / "run_scenario_result.json").read_text(encoding="utf-8"))
        return [message["text"] for message in result["messages"]]

    def test_a_box_of_steel_has_the_mass_of_its_volume(self) -> None:
        self.assertEqual(self.run_scenario("", part=binary(box((10, 20, 30), (20, 40, 60)))), 0)
        self.assertEqual(
            (self.directory / "out" / "mass.csv").read_text(), "file;mass [kg];x;y;z\npart.stl;0.0471;15;30;45\n"
        )
        self.assertEqual(self.texts(), ["part.stl: 0.0471 kg"])

    def test_density_and_unit_are_chosen(self) -> None:
        self.assertEqual(self.run_scenario("density=1000 unit=m", part=binary(box((0, 0, 0), (1, 1, 1)))), 0)
        self.assertEqual(self.texts(), ["part.stl: 1000 kg"])

    def test_text_files_are_read_too(self) -> None:
        bracket = (PROJECT / "examples" / "inputs" / "bracket.stl").read_bytes()
        self.assertEqual(self.run_scenario("plastic", bracket=bracket, box=binary(box((0, 0, 0), (10, 10, 10)))), 0)
        self.assertEqual(len((self.directory / "out" / "mass.csv").read_text().splitlines()), 3)
        self.assertEqual(self.texts()[1], "box.stl: 0.00124 kg")

    def test_a_mesh_with_a_hole_has_no_mass(self) -> None:
        self.assertEqual(self.run_scenario("", part=binary(box((0, 0, 0), (1, 1, 1))[1:])), 1)
        self.assertEqual(
            self.texts(), ["part.stl is not closed (3 open edges), so that it has no mass; repair the mesh first."]
        )

    def test_a_flat_mesh_has_no_mass(self) -> None:
        triangle: tuple[Point, ...] = ((0, 0, 0), (1, 0, 0), (0, 1, 0))
        self.assertEqual(self.run_scenario("", part=binary([triangle, triangle[::-1]])), 1)
        self.assertEqual(self.texts(), ["part.stl has no volume, and therefore no mass; export the part again."])

    def test_other_files_fail_with_what_is_wrong(self) -> None:
        for content in (b"", b"no mesh", b"solid part\nfacet", binary(box((0, 0, 0), (1, 1, 1)))[:-1]):
            self.assertEqual(self.run_scenario("", part=content), 1)
            self.assertEqual(self.texts(), ["part.stl is no STL file, or it is cut off; export the part again."])
        self.assertEqual(self.run_scenario("", part=b"solid a\nvertex 1 2 x\nendsolid a\n"), 1)
        self.assertIn("part.stl has a coordinate that is no number", self.texts()[0])

    def test_a_request_that_makes_no_sense_is_refused(self) -> None:
        self.assertEqual(self.run_scenario("density=0", part=b""), 1)
        self.assertEqual(self.texts(), ["The density is 0 kg/m3; choose one above 0."])
        self.assertEqual(self.run_scenario(""), 1)
        self.assertEqual(self.texts(), ["No input file was given; choose one STL file or more."])


if __name__ == "__main__":
    unittest.main()
