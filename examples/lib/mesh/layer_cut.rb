# frozen_string_literal: true

# Cuts a mesh with horizontal planes.
class LayerCut
  def initialize(mesh)
    @triangles = mesh.coordinates.each_slice(9).to_a
  end

  # The segments [x1, y1, x2, y2] in which the triangles meet the plane at this height. A corner that lies in the plane
  # counts as above it, so that each triangle gives one segment or none.
  def at(height)
    @triangles.filter_map do |ax, ay, az, bx, by, bz, cx, cy, cz|
      above = [az >= height, bz >= height, cz >= height]
      next if above.all? || above.none?

      points = []
      points << crossing(ax, ay, az, bx, by, bz, height) if above[0] != above[1]
      points << crossing(bx, by, bz, cx, cy, cz, height) if above[1] != above[2]
      points << crossing(cx, cy, cz, ax, ay, az, height) if above[2] != above[0]
      points.flatten
    end
  end

  private

  def crossing(x1, y1, z1, x2, y2, z2, height)
    share = (height - z1) / (z2 - z1)
    [x1 + (share * (x2 - x1)), y1 + (share * (y2 - y1))]
  end
end
