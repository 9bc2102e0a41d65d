# frozen_string_literal: true

# Sizes of a mesh, in the unit of its file: STL files do not say theirs.
class Measures
  TRIANGLES_AT_ONCE = 4096

  # A triangle flatter than this (its height divided by its longest side) has no area worth the name.
  FLATTEST = 1e-7

  # Lists of x, y and z.
  attr_reader :minimum, :maximum

  attr_reader :surface, :degenerate_count

  # Positive where the triangles face outwards; means something only when they enclose a volume.
  attr_reader :volume

  # Measures these triangles (all of them unless told otherwise); yields how much is done, from 0 to 1.
  def initialize(mesh, triangles = 0...mesh.triangle_count, &progress)
    @coordinates = mesh.coordinates
    @surface = 0.0
    @volume = 0.0
    @degenerate_count = 0
    measure_box(triangles)
    measure_triangles(triangles, &progress)
  end

  def size
    minimum.zip(maximum).map { |low, high| high - low }
  end

  def center
    minimum.zip(maximum).map { |low, high| (low + high) / 2 }
  end

  private

  def measure_box(triangles)
    ranges = Array.new(3) { |axis| measure_axis(triangles, axis) }
    @minimum, @maximum = ranges.transpose
  end

  def measure_axis(triangles, axis)
    places = [axis, axis + 3, axis + 6]
    triangles.each_slice(TRIANGLES_AT_ONCE).map do |slice|
      slice.flat_map { |triangle| places.map { |place| @coordinates[(9 * triangle) + place] } }.minmax
    end.flatten.minmax
  end

  def measure_triangles(triangles)
    count = triangles.size
    middle = center # volumes are summed from here: far from the part they would cancel out
    triangles.each_with_index do |triangle, index|
      yield index.fdiv(count) if block_given? && (index % TRIANGLES_AT_ONCE).zero?
      measure(*corners_from(middle, triangle))
    end
  end

  def corners_from(middle, triangle)
    x, y, z = middle
    ax, ay, az, bx, by, bz, cx, cy, cz = @coordinates[9 * triangle, 9]
    [ax - x, ay - y, az - z, bx - x, by - y, bz - z, cx - x, cy - y, cz - z]
  end

  def measure(ax, ay, az, bx, by, bz, cx, cy, cz)
    ux, uy, uz = bx - ax, by - ay, bz - az
    vx, vy, vz = cx - ax, cy - ay, cz - az
    nx, ny, nz = (uy * vz) - (uz * vy), (uz * vx) - (ux * vz), (ux * vy) - (uy * vx)
    twice_area = Math.sqrt((nx * nx) + (ny * ny) + (nz * nz))
    @surface += twice_area / 2
    @volume += ((ax * nx) + (ay * ny) + (az * nz)) / 6
    longest = [(ux * ux) + (uy * uy) + (uz * uz), (vx * vx) + (vy * vy) + (vz * vz),
               ((cx - bx)**2) + ((cy - by)**2) + ((cz - bz)**2)].max
    @degenerate_count += 1 if twice_area <= FLATTEST * longest
  end
end
