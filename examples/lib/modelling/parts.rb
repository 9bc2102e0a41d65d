# frozen_string_literal: true

require_relative "helical_gear"
require_relative "solid"

# The parts that the examples work on; sizes in millimetres.
module Parts
  # An angle bracket with a rounded inner corner, two holes in its foot and one in its upright.
  def self.bracket
    AngleBracket.new(15.0).solid
  end

  # The bracket again, with a larger hole in its upright.
  def self.bracket_revision
    AngleBracket.new(20.0).solid
  end

  # A lidded pressure vessel on a foot, with a closed cavity inside.
  def self.housing
    outside = [[0, 0], [40, 0], [40, 5], [30, 5], [27, 8], [25, 12], [25, 52], [34, 52], [34, 63], [26, 63],
               *dome(26, 63, 22), [6, 85], [6, 92], [0, 92]]
    cavity = [[0, 6], [20, 12], [20, 60], *dome(20, 60, 20, 4), [0, 80]]
    Solid.new.tap do |solid|
      solid.revolve(outside, 28)
      solid.revolve(cavity.reverse, 20)
    end
  end

  # Points on a quarter of an ellipse, without its first and its last.
  def self.dome(radius, z, height, steps = 6)
    (1...steps).map do |step|
      angle = Math::PI / 2 * step / steps
      [radius * Math.cos(angle), z + (height * Math.sin(angle))]
    end
  end
  private_class_method :dome

  # A welding neck flange with bolt holes whose mesh lacks triangles in two places.
  def self.torn_flange
    flange.tap do |solid|
      torn = solid.triangles.select { |corners| torn?(corners) }
      solid.triangles.replace(solid.triangles - torn)
    end
  end

  def self.torn?(corners)
    x, y, z = corners.transpose.map { |values| values.sum / 3 }
    (x > 28 && z > 1 && z < 11 && y.between?(-36, -24)) || (x.abs < 9 && y < 0 && z > 13 && Math.hypot(x, y) > 24)
  end
  private_class_method :torn?

  def self.flange
    rim, hub, bore = [50, 26, 17].map { |radius| ->(z) { Solid.circle([0.0, 0.0, z], radius, 40) } }
    bolts = (0...6).map { |bolt| bolt_hole(Math::PI / 3 * (bolt + 0.5)) }
    Solid.new.tap do |solid|
      solid.face(rim.call(0.0), [bore, *bolts].map { |hole| hole.call(0.0) }, [0, 0, -1])
      solid.face(rim.call(12.0), [hub, *bolts].map { |hole| hole.call(12.0) }, [0, 0, 1])
      solid.face(hub.call(30.0), [bore.call(30.0)], [0, 0, 1])
      solid.wall(rim.call(0.0), rim.call(12.0))
      solid.wall(hub.call(12.0), hub.call(30.0))
      solid.wall(bore.call(30.0), bore.call(0.0))
      bolts.each { |hole| solid.wall(hole.call(12.0), hole.call(0.0)) }
    end
  end
  private_class_method :flange

  def self.bolt_hole(angle)
    ->(z) { Solid.circle([38 * Math.cos(angle), 38 * Math.sin(angle), z], 5, 16) }
  end
  private_class_method :bolt_hole

  # A helical gear with a web, lightening holes and a hub: more than 100,000 triangles.
  def self.gear
    HelicalGear.new(teeth: 30, layers: 76).solid
  end

  # The bracket: an L-shaped profile in x and z, drawn out along y.
  class AngleBracket
    WIDTH = 60.0
    THICKNESS = 8.0
    FILLET = 12.0
    LENGTH = 80.0
    HEIGHT = 72.0
    SEGMENTS = 24

    def initialize(upright_hole_radius)
      @upright_hole_radius = upright_hole_radius
    end

    def solid
      @solid = Solid.new
      @solid.face(profile(0.0), [], [0, -1, 0])
      @solid.face(profile(WIDTH), [], [0, 1, 0])
      add_plain_sides
      add_drilled_sides
      @solid
    end

    private

    def profile(y)
      inner = THICKNESS + FILLET
      arc = (0..8).map do |step|
        angle = -Math::PI / 2 * (1 + (step / 8.0))
        [inner + (FILLET * Math.cos(angle)), y, inner + (FILLET * Math.sin(angle))]
      end
      [[0.0, y, 0.0], [LENGTH, y, 0.0], [LENGTH, y, THICKNESS], *arc, [THICKNESS, y, HEIGHT], [0.0, y, HEIGHT]]
    end

    # The sides of the profile that carry no hole: the foot's end, the fillet and the upright's top.
    def add_plain_sides
      front = profile(0.0)
      back = profile(WIDTH)
      [1, *(3..10), 12].each { |place| add_side(front[place], front[place + 1], back[place + 1], back[place]) }
    end

    def add_side(a, b, c, d)
      @solid.add(a, d, c)
      @solid.add(a, c, b)
    end

    def add_drilled_sides
      foot = [[52.0, 18.0], [52.0, 42.0]].map { |x, y| ->(z) { Solid.circle([x, y, z], 6.5, SEGMENTS) } }
      upright = ->(x) { Solid.circle([x, WIDTH / 2, 46.0], @upright_hole_radius, SEGMENTS, %i[y z]) }
      drill(foot, [2, 3], [0, 1], 2, THICKNESS)
      drill([upright], [11, 12], [13, 0], 0, THICKNESS)
    end

    # Two parallel sides, given by the profile's points, with holes through both along the axis from 0 to `upper`.
    def drill(holes, upper_side, lower_side, axis, upper)
      normal = [0, 0, 0].tap { |vector| vector[axis] = 1 }
      @solid.face(rectangle(upper_side), holes.map { |hole| hole.call(upper) }, normal)
      @solid.face(rectangle(lower_side), holes.map { |hole| hole.call(0.0) }, normal.map(&:-@))
      holes.each { |hole| @solid.wall(hole.call(upper), hole.call(0.0)) }
    end

    def rectangle(side)
      profile(0.0).values_at(*side) + profile(WIDTH).values_at(*side.reverse)
    end
  end
  private_constant :AngleBracket
end
