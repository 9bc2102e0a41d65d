# frozen_string_literal: true

# Cuts a flat polygon with holes into triangles by clipping ears. No vertex is added.
class Triangulation
  # `outline` and each of `holes` are lists of [x, y] without repetition, in either direction.
  # Returns lists of three positions in outline + holes.flatten(1), counter-clockwise.
  def self.of(outline, holes = [])
    new(outline, holes).triangles
  end

  def initialize(outline, holes)
    @points = outline + holes.flatten(1)
    @ring = turn(0, outline.size, 1)
    first = outline.size
    rings = holes.map do |hole|
      turn(first, hole.size, -1).tap { first += hole.size }
    end
    rings.sort_by { |ring| -ring.map { |index| @points[index][0] }.max }.each { |ring| join(ring) }
  end

  def triangles
    result = []
    place = 0
    idle = 0
    while @ring.size > 3
      raise ArgumentError, "the polygon crosses itself" if idle > @ring.size

      place %= @ring.size
      ear = [@ring[place - 1], @ring[place], @ring[(place + 1) % @ring.size]]
      if ear?(*ear)
        result << ear
        @ring.delete_at(place)
        idle = 0
      else
        idle += 1
      end
      place += 1
    end
    result << @ring
  end

  private

  # The positions of one ring, in the wanted direction: 1 counter-clockwise, -1 clockwise.
  def turn(first, count, direction)
    ring = (first...(first + count)).to_a
    area = ring.each_index.sum { |place| cross(@points[ring[place - 1]], @points[ring[place]]) }
    (area * direction).positive? ? ring : ring.reverse
  end

  def cross(one, other)
    (one[0] * other[1]) - (one[1] * other[0])
  end

  # Cuts the polygon open from the hole's rightmost vertex to the nearest vertex of the ring that it sees.
  def join(hole)
    start = hole.index(hole.max_by { |index| @points[index][0] })
    hole = hole.rotate(start)
    near = @ring.each_index.sort_by { |place| distance(@ring[place], hole.first) }
    place = near.find { |candidate| sees?(hole, candidate) }
    raise ArgumentError, "a hole lies outside of the polygon" if place.nil?

    @ring.insert(place + 1, *hole, hole.first, @ring[place])
  end

  def distance(one, other)
    ((@points[one][0] - @points[other][0])**2) + ((@points[one][1] - @points[other][1])**2)
  end

  def sees?(hole, place)
    [@ring, hole].none? do |ring|
      ring.each_index.any? { |index| crosses?(hole.first, @ring[place], ring[index - 1], ring[index]) }
    end && inside_corner?(place, hole.first)
  end

  def crosses?(a, b, c, d)
    return false if [a, b].any? { |end_point| [c, d].any? { |other| @points[end_point] == @points[other] } }

    side(a, b, c) * side(a, b, d) <= 0 && side(c, d, a) * side(c, d, b) <= 0
  end

  # Whether the ring's interior at this place lies towards the target.
  def inside_corner?(place, target)
    before, here, after = @ring[place - 1], @ring[place], @ring[(place + 1) % @ring.size]
    left_of_both = [side(before, here, target), side(here, after, target)].map(&:positive?)
    side(before, here, after).positive? ? left_of_both.all? : left_of_both.any?
  end

  # Twice the area of the triangle: positive when c lies to the left of the way from a to b.
  def side(a, b, c)
    ax, ay = @points[a]
    bx, by = @points[b]
    cx, cy = @points[c]
    ((bx - ax) * (cy - ay)) - ((by - ay) * (cx - ax))
  end

  def ear?(a, b, c)
    return false unless side(a, b, c) > 1e-12

    corners = [@points[a], @points[b], @points[c]]
    @ring.none? { |index| !corners.include?(@points[index]) && covers?(a, b, c, index) }
  end

  def covers?(a, b, c, point)
    side(a, b, point) >= 0 && side(b, c, point) >= 0 && side(c, a, point) >= 0
  end
end
