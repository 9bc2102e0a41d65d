# frozen_string_literal: true

require_relative "solid"

# A gear with involute teeth that wind around its axis.
class HelicalGear
  MODULE = 3.0
  PRESSURE_ANGLE = 20 * Math::PI / 180
  WIDTH = 26.0
  TWIST = 0.22 # radians from one face to the other
  FLANK_STEPS = 8
  ROUND_SEGMENTS = 96
  RECESS = 7.0
  LIGHTENING_HOLES = 6

  def initialize(teeth:, layers:)
    @teeth = teeth
    @layers = layers
    @pitch = MODULE * teeth / 2
    @base = @pitch * Math.cos(PRESSURE_ANGLE)
    @root = @pitch - (1.2 * MODULE)
    @tip = @pitch + MODULE
  end

  def solid
    @solid = Solid.new
    add_teeth
    add_faces
    add_inside
    @solid
  end

  private

  def add_teeth
    loops = (0..@layers).map { |layer| outline(layer.fdiv(@layers)) }
    loops.each_cons(2) { |lower, upper| @solid.wall(lower, upper) }
  end

  # The outline at a height from 0 to 1.
  def outline(height)
    turn = TWIST * height
    z = WIDTH * height
    tooth.product((0...@teeth).to_a).sort_by { |(_, place), number| [number, place] }.map do |(radius_angle, _), number|
      radius, angle = radius_angle
      around = turn + angle + (2 * Math::PI * number / @teeth)
      [radius * Math.cos(around), radius * Math.sin(around), z]
    end
  end

  # One tooth and the gap behind it as [[radius, angle], place].
  def tooth
    @tooth ||= (rising + tip_points + falling + root_points).each_with_index.to_a
  end

  def rising
    start = [@root, @base].max
    radii = (0..FLANK_STEPS).map { |step| start + ((@tip - start) * step / FLANK_STEPS) }
    radii.map { |radius| [radius, -half_angle(radius)] }.unshift([@root, -half_angle(start) - 0.012])
  end

  def falling
    rising.reverse.map { |radius, angle| [radius, -angle] }
  end

  # Half of the tooth's width at a radius, as an angle.
  def half_angle(radius)
    (Math::PI / (2 * @teeth)) + involute(PRESSURE_ANGLE) - involute(Math.acos([@base / radius, 1.0].min))
  end

  def involute(angle)
    Math.tan(angle) - angle
  end

  def tip_points
    half = half_angle(@tip)
    [[@tip, -half / 3], [@tip, half / 3]]
  end

  def root_points
    edge = rising.first[1].abs
    gap = (2 * Math::PI / @teeth) - (2 * edge)
    [[@root, edge + (gap / 3)], [@root, edge + (2 * gap / 3)]]
  end

  def circle(radius, z)
    Solid.circle([0.0, 0.0, z], radius, ROUND_SEGMENTS)
  end

  def rim_radius
    @root - 5
  end

  def add_faces
    [[0.0, [0, 0, -1]], [WIDTH, [0, 0, 1]]].each do |z, normal|
      @solid.face(outline(z / WIDTH), [circle(rim_radius, z)], normal)
      @solid.face(circle(18, z), [bore(z)], normal)
      @solid.face(circle(rim_radius, web(z)), [circle(18, web(z)), *lightening_holes(web(z))], normal)
    end
  end

  # The height of the web's surface below a face.
  def web(z)
    z.zero? ? RECESS : WIDTH - RECESS
  end

  def add_inside
    add_recess(circle(rim_radius, WIDTH), circle(rim_radius, web(WIDTH)), circle(18, web(WIDTH)), circle(18, WIDTH))
    add_recess(circle(rim_radius, web(0.0)), circle(rim_radius, 0.0), circle(18, 0.0), circle(18, web(0.0)))
    @solid.wall(bore(WIDTH), bore(0.0))
    lightening_holes(web(WIDTH)).zip(lightening_holes(web(0.0))) { |upper, lower| @solid.wall(upper, lower) }
  end

  def add_recess(rim_above, rim_below, hub_below, hub_above)
    @solid.wall(rim_above, rim_below)
    @solid.wall(hub_below, hub_above)
  end

  # The bore with a keyway at its top.
  def bore(z)
    half = Math.asin(3.0 / 10)
    arc = (0..40).map do |step|
      angle = (Math::PI / 2) + half + ((2 * Math::PI - (2 * half)) * step / 40)
      [10 * Math.cos(angle), 10 * Math.sin(angle), z]
    end
    arc + [[3.0, 13.0, z], [-3.0, 13.0, z]]
  end

  def lightening_holes(z)
    middle = (rim_radius + 18) / 2
    (0...LIGHTENING_HOLES).map do |number|
      angle = 2 * Math::PI * number / LIGHTENING_HOLES
      Solid.circle([middle * Math.cos(angle), middle * Math.sin(angle), z], 6.0, 36)
    end
  end
end
