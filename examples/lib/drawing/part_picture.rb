# frozen_string_literal: true

require_relative "canvas"
require_relative "corner_normals"
require_relative "ground_shadow"

# Draws a part shaded in an isometric view from the right, the front and above.
# Creases and outlines are drawn dark, the rims of holes in the mesh red; the inside of a surface shows in a colour of
# its own.
class PartPicture
  TRIANGLES_AT_ONCE = 8 # each may fill the whole picture
  EDGES_AT_ONCE = 4096

  # The camera's axes: to the right, upwards and towards the eye.
  RIGHT = [1, 1, 0].map { |value| value / Math.sqrt(2) }.freeze
  UPWARDS = [-1, 1, 2].map { |value| value / Math.sqrt(6) }.freeze
  TOWARDS_EYE = [1, -1, 1].map { |value| value / Math.sqrt(3) }.freeze

  # The z axis as the camera sees it.
  VERTICAL = [RIGHT, UPWARDS, TOWARDS_EYE].map(&:last).freeze

  # The part of the picture that the part may fill.
  FILLED = 0.84

  BACKGROUND = [[0.0, 250, 251, 253], [0.55, 236, 240, 245], [1.0, 206, 214, 224]].freeze
  OUTSIDE = [[0.0, 24, 34, 48], [0.35, 58, 84, 112], [0.7, 118, 152, 184], [0.9, 178, 202, 222],
             [1.0, 246, 250, 253]].freeze
  INSIDE = [[0.0, 60, 30, 16], [0.5, 168, 98, 52], [0.9, 226, 170, 120], [1.0, 252, 236, 220]].freeze
  SHADES = 256

  CREASE = Canvas.colour(22, 30, 42)
  RIM = Canvas.colour(216, 36, 28)
  CREASE_COSINE = Math.cos(28 * Math::PI / 180)

  # How much nearer to the eye lines are than the surfaces they lie on, in samples.
  LINE_LIFT = 2.5

  # In the camera's axes: the main light from the upper left, and the direction in which it is mirrored.
  LIGHT = [-0.42, 0.62, 0.663].freeze
  MIRRORED = [-0.23, 0.34, 0.912].freeze

  # A picture of `width` by 3/4 `width` pixels. `palettes`: the SHADES colours of each triangle; nil: those of a part.
  def initialize(topology, width, palettes: nil)
    @topology = topology
    @palettes = palettes
    @width = width
    @height = width * 3 / 4
    @canvas = Canvas.new(@width, @height)
    @outside = Canvas.gradient(OUTSIDE, SHADES)
    @inside = Canvas.gradient(INSIDE, SHADES)
  end

  # The bytes of a PNG file; yields how much is done, from 0 to 1.
  def to_png
    yield 0.0 if block_given?
    @points = place(@topology.vertices)
    shadow = cast_shadow { |done| yield done * 0.2 if block_given? }
    normals = CornerNormals.new(@topology, @points) { |done| yield 0.2 + (done * 0.1) if block_given? }
    draw_surfaces(normals) { |done| yield 0.3 + (done * 0.4) if block_given? }
    draw_lines(normals) { |done| yield 0.7 + (done * 0.1) if block_given? }
    @canvas.to_png(shadow) { |done| yield 0.8 + (done * 0.2) if block_given? }
  end

  private

  # Turns the vertices to the camera and fits them into the canvas; y grows upwards until they are drawn.
  def place(vertices)
    turned = vertices.map { |point| [dot(RIGHT, point), dot(UPWARDS, point), dot(TOWARDS_EYE, point)] }
    low, high = turned.transpose.map(&:minmax).transpose
    scales = [@width / (high[0] - low[0]), @height / (high[1] - low[1])].reject(&:infinite?)
    scale = FILLED * Canvas::SAMPLES * (scales.min || 1.0)
    x, y, z = low.zip(high).map { |from, to| (from + to) / 2 }
    turned.map { |point| [(point[0] - x) * scale, (point[1] - y) * scale, (point[2] - z) * scale] }
  end

  def dot(one, other)
    (one[0] * other[0]) + (one[1] * other[1]) + (one[2] * other[2])
  end

  def cast_shadow
    yield 0.0
    shadow = GroundShadow.new(@width, Canvas.gradient(BACKGROUND, @height))
    thrown = shadow_points
    count = @topology.corners.size / 3
    count.times do |triangle|
      yield triangle.fdiv(count) if (triangle % TRIANGLES_AT_ONCE).zero?
      shadow.cover(*thrown.values_at(*@topology.corners[3 * triangle, 3]))
    end
    shadow.soften
    shadow
  end

  # Where the light throws each vertex on the ground below the lowest one.
  def shadow_points
    heights = @points.map { |point| dot(point, VERTICAL) }
    ground = heights.min
    descent = dot(LIGHT, VERTICAL)
    @points.zip(heights).map do |point, height|
      way = (height - ground) / descent
      on_canvas([point[0] - (LIGHT[0] * way), point[1] - (LIGHT[1] * way), 0.0])
    end
  end

  def draw_surfaces(normals)
    count = normals.faces.size / 3
    normals.each do |triangle, *corner_normals|
      yield triangle.fdiv(count) if (triangle % TRIANGLES_AT_ONCE).zero?
      front = normals.front?(triangle)
      corners = @topology.corners[3 * triangle, 3].zip(corner_normals).map do |vertex, normal|
        on_canvas(@points[vertex]) << shade(front ? normal : normal.map(&:-@))
      end
      @canvas.fill(*corners, @palettes ? @palettes[triangle] : (front ? @outside : @inside))
    end
  end

  def on_canvas(point, lift = 0.0)
    [(@width * Canvas::SAMPLES / 2) + point[0], (@height * Canvas::SAMPLES / 2) - point[1], point[2] + lift]
  end

  # Soft light from the main direction, and a little gloss.
  def shade(normal)
    lit = (dot(normal, LIGHT) * 0.5) + 0.5
    gloss = [dot(normal, MIRRORED), 0.0].max**36
    [((lit * 0.86) + (gloss * 0.16)) * (SHADES - 1), SHADES - 1.0].min
  end

  def draw_lines(normals)
    count = @topology.first_triangle.size
    @topology.first_triangle.each_with_index do |(edge, triangle), index|
      yield index.fdiv(count) if (index % EDGES_AT_ONCE).zero?
      other = @topology.second_triangle[edge]
      if other.nil?
        draw_line(edge, Canvas::SAMPLES + 2, RIM)
      elsif outline?(normals, triangle, other)
        draw_line(edge, Canvas::SAMPLES, CREASE)
      end
    end
  end

  # Whether a line belongs between two triangles: a crease, or the outline of a round surface.
  def outline?(normals, one, other)
    normals.cosine(one, other) < CREASE_COSINE || normals.front?(one) != normals.front?(other)
  end

  def draw_line(edge, thickness, colour)
    from, to = @topology.edge_vertices(edge).map { |vertex| on_canvas(@points[vertex], LINE_LIFT) }
    @canvas.line(from, to, thickness, colour)
  end
end
