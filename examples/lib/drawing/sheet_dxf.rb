# frozen_string_literal: true

# A DrawingSheet as a DXF file of release 12, which every CAD system reads: visible edges on the layer VISIBLE, hidden ones
# dashed on the layer HIDDEN. Scale 1:1, in mm.
module SheetDxf
  DASH = 2.0 # mm; the gaps are half as long

  def self.encode(sheet)
    header = section("HEADER", [9, "$ACADVER", 1, "AC1009"])
    tables = section("TABLES", table("LTYPE", line_types) + table("LAYER", layers))
    entities = section("ENTITIES", sheet.lines.flat_map { |line| entity(line) })
    [header, tables, entities, [0, "EOF"]].flatten.each_slice(2).map { |code, value| "#{code}\n#{value}\n" }.join
  end

  def self.section(name, content)
    [0, "SECTION", 2, name, *content, 0, "ENDSEC"]
  end
  private_class_method :section

  def self.table(name, entries)
    [0, "TABLE", 2, name, 70, entries.size, *entries.flatten, 0, "ENDTAB"]
  end
  private_class_method :table

  def self.line_types
    [[0, "LTYPE", 2, "CONTINUOUS", 70, 0, 3, "Solid", 72, 65, 73, 0, 40, 0.0],
     [0, "LTYPE", 2, "HIDDEN", 70, 0, 3, "Dashed", 72, 65, 73, 2, 40, DASH * 1.5, 49, DASH, 49, -DASH / 2]]
  end
  private_class_method :line_types

  def self.layers
    [[0, "LAYER", 2, "VISIBLE", 70, 0, 62, 7, 6, "CONTINUOUS"], [0, "LAYER", 2, "HIDDEN", 70, 0, 62, 8, 6, "HIDDEN"]]
  end
  private_class_method :layers

  def self.entity(line)
    layer = [8, line.visible ? "VISIBLE" : "HIDDEN"]
    points = line.points.map { |x, y| [10, x.round(6), 20, y.round(6), 30, 0.0] }
    if points.size == 2
      return [0, "LINE", *layer, *points[0], 11, points[1][1], 21, points[1][3], 31, 0.0]
    end

    vertices = points.flat_map { |point| [0, "VERTEX", *layer, *point] }
    [0, "POLYLINE", *layer, 66, 1, 10, 0.0, 20, 0.0, 30, 0.0, 70, 0, *vertices, 0, "SEQEND", *layer]
  end
  private_class_method :entity
end
