# frozen_string_literal: true

require_relative "canvas"

# The soft shadow of a part on the ground, in the background of its picture.
# It is made of cells larger than a pixel: it has no sharp edge that would show them.
class GroundShadow
  # The picture's width in cells.
  COLUMNS = 400

  DARKEST = 0.27
  VISIBLE = 0.002

  # The blur's radius in cells; it is done this many times.
  RADIUS = 5
  BLUR_TIMES = 3

  # For a background `width` pixels wide; `colours` holds its colour in each pixel row.
  def initialize(width, colours)
    @width = width
    @colours = colours
    @cell = [width / COLUMNS, 1].max
    columns, rows = [width, colours.size].map { |pixels| (pixels / @cell / Canvas::SAMPLES) + 1 }
    @mask = Canvas.new(columns, rows)
  end

  # Adds a triangle, its corners [x, y] in samples of the picture. A cell is one sample of the mask.
  def cover(*corners)
    scale = @cell * Canvas::SAMPLES
    @mask.fill(*corners.map { |x, y| [x.fdiv(scale), y.fdiv(scale), 0.0, 0.0] }, [0])
  end

  # To be called once all triangles are there.
  def soften
    @darkness = blur(@mask.covered.map { |row| row.map { |covered| covered ? DARKEST : 0.0 } })
  end

  # See Canvas#to_png.
  def row(number)
    colour = @colours[number]
    cells = @darkness[number / @cell].map { |dark| dark < VISIBLE ? colour : darken(colour, dark) }
    cells.flat_map { |shade| [shade] * @cell }.first(@width)
  end

  private

  # A bluish shade: the sky still lights the shadow.
  def darken(colour, dark)
    red, green, blue = Canvas.channels(colour)
    Canvas.colour(red * (1 - dark), green * (1 - (dark * 0.93)), blue * (1 - (dark * 0.78)))
  end

  def blur(grid)
    BLUR_TIMES.times do
      grid = grid.map { |row| smooth(row) }.transpose
      grid = grid.map { |row| smooth(row) }.transpose
    end
    grid
  end

  # Every value becomes the mean of those up to the radius around it.
  def smooth(row)
    edge = [0.0] * (RADIUS + 1)
    padded = edge + row + edge
    span = (2 * RADIUS) + 1
    sum = padded.first(span).sum
    row.each_index.map do |place|
      sum += padded[place + span] - padded[place]
      sum / span
    end
  end
end
