# Checks, measures, meshes and converts a part in FreeCAD. Settings: input, faces, deflection (relative to the diagonal),
# formats (separated by blanks). Writes made.<format> for each format, and part.stl. lib/cad/scripted_tool.rb hears it.
import importlib
import os
import sys
import traceback
from typing import Any


def setting(name: str) -> str:
    return os.environ["SETTING_" + name.upper()]


def tell(kind: str, text: Any = "") -> None:
    print(setting("token"), kind, str(text).replace("\n", " "), flush=True)


def value(name: str, what: Any) -> None:
    tell("VALUE", "%s %s" % (name, what))


def read(Part: Any, name: str) -> Any:
    shape = Part.Shape()
    shape.read(name)
    faces = len(shape.Faces)
    if faces < int(setting("faces")):
        raise ValueError("%s is damaged: only %d of its %s faces could be read" % (name, faces, setting("faces")))
    return shape


def measure(shape: Any) -> float:
    box = shape.BoundBox
    value("box_part", " ".join(repr(place) for place in (box.XMin, box.YMin, box.ZMin, box.XMax, box.YMax, box.ZMax)))
    value("valid_part", int(shape.isValid()))
    for kind, parts in (("SOLID", shape.Solids), ("FACE", shape.Faces), ("EDGE", shape.Edges)):
        value(kind, len(parts))
    value("area", repr(shape.Area))
    value("volume", repr(sum(solid.Volume for solid in shape.Solids)))
    return float(box.DiagonalLength)


def write(shape: Any, mesh: Any, form: str) -> None:
    writers = {"step": shape.exportStep, "iges": shape.exportIges, "brep": shape.exportBrep}
    writers.get(form, mesh.write)("made." + form)


def work() -> None:
    tell("STEP", "0 30 Starting FreeCAD")
    FreeCAD, MeshPart, Part = (importlib.import_module(name) for name in ("FreeCAD", "MeshPart", "Part"))
    value("version", ".".join(FreeCAD.Version()[:3]).split()[0])
    name = setting("input")
    tell("STEP", "30 50 Reading " + name)
    shape = read(Part, name)
    tell("STEP", "50 70 Measuring " + name)
    deflection = float(setting("deflection")) * measure(shape)
    tell("STEP", "70 90 Meshing " + name)
    mesh = MeshPart.meshFromShape(Shape=shape, LinearDeflection=deflection, AngularDeflection=0.35)
    value("triangles_part", mesh.CountFacets)
    mesh.write("part.stl")
    tell("STEP", "90 100 Writing " + name)
    for form in setting("formats").split():
        write(shape, mesh, form)
    tell("DONE")


# FreeCAD runs a script again that ends with an exception, and crashes in some of its own endings.
try:
    work()
except BaseException as error:
    traceback.print_exc()
    tell(
        "ERROR", error if isinstance(error, ValueError) else "%s could not be worked on: %s" % (setting("input"), error)
    )
sys.stdout.flush()
os._exit(0)
