# frozen_string_literal: true

require_relative "triangulation"

# Triangles of a part under construction. Points are [x, y, z] in millimetres; loops are closed lists of points.
class Solid
  # Decimal places kept, so that points reached on different ways meet exactly.
  DECIMALS = 4

  attr_reader :triangles

  def initialize
    @triangles = []
  end

  def self.circle(center, radius, segments, plane = %i[x y])
    (0...segments).map do |segment|
      angle = 2 * Math::PI * segment / segments
      point = center.dup
      point["xyz".index(plane[0].to_s)] += radius * Math.cos(angle)
      point["xyz".index(plane[1].to_s)] += radius * Math.sin(angle)
      point
    end
  end

  def add(*corners)
    rounded = corners.map { |point| point.map { |value| value.round(DECIMALS) + 0.0 } }
    @triangles << rounded unless rounded.uniq.size < 3
  end

  # The surface between two loops of equally many points. Seen from outside, the first one lies below
  # and runs from left to right.
  def wall(lower, upper)
    lower.each_index do |place|
      add(lower[place - 1], lower[place], upper[place])
      add(lower[place - 1], upper[place], upper[place - 1])
    end
  end

  # A flat face with holes that looks along `normal`, which is one of the axes.
  def face(outline, holes, normal)
    axes = [0, 1, 2].select { |axis| normal[axis].zero? }
    flat = [outline, *holes].map { |ring| ring.map { |point| point.values_at(*axes) } }
    points = outline + holes.flatten(1)
    # Dropping the y axis mirrors the plane.
    ahead = normal.sum.positive? ^ normal[1].nonzero?
    Triangulation.of(flat.first, flat.drop(1)).each do |triangle|
      add(*points.values_at(*(ahead ? triangle : triangle.reverse)))
    end
  end

  # A body of revolution around z; `profile` holds [radius, z] from the bottom to the top of the outside.
  # Read from the top to the bottom it makes a cavity.
  def revolve(profile, segments)
    loops = profile.map { |radius, z| self.class.circle([0.0, 0.0, z], radius, segments) }
    loops.each_cons(2) { |lower, upper| wall(lower, upper) }
  end

  def write_binary(path)
    bytes = ["Part made by make_inputs.rb".ljust(80), triangles.size].pack("a80V")
    triangles.each { |corners| bytes << [*normal(corners), *corners.flatten, 0].pack("e12v") }
    File.binwrite(path, bytes)
  end

  def write_ascii(path, name)
    lines = triangles.flat_map { |corners| facet_lines(corners) }
    File.binwrite(path, ["solid #{name}", *lines, "endsolid #{name}", ""].join("\n"))
  end

  private

  def facet_lines(corners)
    vertices = corners.map { |point| "      vertex #{numbers(point)}" }
    ["  facet normal #{numbers(normal(corners))}", "    outer loop", *vertices, "    endloop", "  endfacet"]
  end

  def numbers(values)
    values.map { |value| format("%.6g", value.round(6) + 0.0) }.join(" ")
  end

  def normal(corners)
    (ax, ay, az), (bx, by, bz), (cx, cy, cz) = corners
    ux, uy, uz, vx, vy, vz = bx - ax, by - ay, bz - az, cx - ax, cy - ay, cz - az
    vector = [(uy * vz) - (uz * vy), (uz * vx) - (ux * vz), (ux * vy) - (uy * vx)]
    length = Math.sqrt(vector.sum { |value| value * value })
    length.zero? ? [0.0, 0.0, 0.0] : vector.map { |value| value / length }
  end
end
