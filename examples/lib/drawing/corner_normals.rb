# frozen_string_literal: true

# The directions in which a part's surface looks, seen by a camera: one per triangle and one per corner.
# Across a smooth surface the corners take the mean of the triangles around them; across a crease they do not.
class CornerNormals
  TRIANGLES_AT_ONCE = 1024

  # Surfaces that meet at less than about 35 degrees count as smooth.
  SMOOTH_COSINE = 0.82

  # Flat lists of x, y, z with length 1 per triangle; [0, 0, 0] where a triangle has no area.
  attr_reader :faces

  # Around a vertex with more triangles than this (the tip of a cone) nothing is smoothed: the work would grow with
  # the square of their number.
  NEIGHBOUR_LIMIT = 64

  # `points` holds the seen x, y, z of every vertex. Yields how much is done, from 0 to 1.
  def initialize(topology, points)
    @corners = topology.corners
    @points = points
    @faces = []
    @weights = []
    @neighbours = Array.new(topology.vertex_count) { [] }
    count = @corners.size / 3
    count.times do |triangle|
      yield triangle.fdiv(count) if block_given? && (triangle % TRIANGLES_AT_ONCE).zero?
      measure(triangle)
      @corners[3 * triangle, 3].each { |vertex| @neighbours[vertex] << triangle }
    end
  end

  # Yields triangle number and the three corners' normals for every triangle.
  def each
    (@corners.size / 3).times do |triangle|
      yield triangle, corner(triangle, 0), corner(triangle, 1), corner(triangle, 2)
    end
  end

  # Whether the triangle turns its outside to the camera.
  def front?(triangle)
    @faces[(3 * triangle) + 2] >= 0
  end

  # The cosine of the angle between two triangles.
  def cosine(one, other)
    (@faces[3 * one] * @faces[3 * other]) + (@faces[(3 * one) + 1] * @faces[(3 * other) + 1]) +
      (@faces[(3 * one) + 2] * @faces[(3 * other) + 2])
  end

  private

  def measure(triangle)
    a, b, c = @corners[3 * triangle, 3]
    ax, ay, az = @points[a]
    bx, by, bz = @points[b]
    cx, cy, cz = @points[c]
    ux, uy, uz, vx, vy, vz = bx - ax, by - ay, bz - az, cx - ax, cy - ay, cz - az
    x, y, z = (uy * vz) - (uz * vy), (uz * vx) - (ux * vz), (ux * vy) - (uy * vx)
    length = Math.sqrt((x * x) + (y * y) + (z * z))
    @weights << length
    length.zero? ? @faces.push(0.0, 0.0, 0.0) : @faces.push(x / length, y / length, z / length)
  end

  def corner(triangle, number)
    own_x, own_y, own_z = @faces[3 * triangle, 3]
    neighbours = @neighbours[@corners[(3 * triangle) + number]]
    return [own_x, own_y, own_z] if neighbours.size > NEIGHBOUR_LIMIT

    x = y = z = 0.0
    neighbours.each do |neighbour|
      nx, ny, nz = @faces[3 * neighbour, 3]
      next if (nx * own_x) + (ny * own_y) + (nz * own_z) < SMOOTH_COSINE

      weight = @weights[neighbour]
      x += nx * weight
      y += ny * weight
      z += nz * weight
    end
    length = Math.sqrt((x * x) + (y * y) + (z * z))
    length.zero? ? [own_x, own_y, own_z] : [x / length, y / length, z / length]
  end
end
