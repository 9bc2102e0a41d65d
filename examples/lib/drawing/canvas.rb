# frozen_string_literal: true

require_relative "png"

# A picture under construction: several samples per pixel, each with a colour and a depth.
# Coordinates count samples from the upper left corner; depths grow towards the eye.
#
# A colour is one Integer with its channels 16 bits apart, so that colours can be added up whole.
class Canvas
  SAMPLES = 2 # per pixel, in each direction
  ROWS_AT_ONCE = 16

  # Triangles thinner than this (twice their area in samples) get one depth and one shade: a slope over
  # so little would be all rounding error.
  THIN = 0.01

  attr_reader :width, :height

  def self.colour(red, green, blue)
    (red.round << 32) | (green.round << 16) | blue.round
  end

  # The red, green and blue of a colour.
  def self.channels(colour)
    [colour >> 32, (colour >> 16) & 255, colour & 255]
  end

  # Colours between the first and the last stop; a stop is [position from 0 to 1, red, green, blue].
  def self.gradient(stops, count)
    (0...count).map do |index|
      position = index.fdiv(count - 1)
      low, high = stops.each_cons(2).find { |_, upper| position <= upper.first } || stops.last(2)
      part = (position - low.first) / (high.first - low.first)
      colour(*low.drop(1).zip(high.drop(1)).map { |from, to| from + ((to - from) * part) })
    end
  end

  # Width and height in pixels.
  def initialize(pixel_width, pixel_height)
    @pixel_width = pixel_width
    @pixel_height = pixel_height
    @width = pixel_width * SAMPLES
    @height = pixel_height * SAMPLES
    @colours = Array.new(@width * @height)
    @depths = [-Float::INFINITY] * (@width * @height)
  end

  # Fills a triangle. Each corner is [x, y, depth, shade]; the shades choose from the palette and, like the depths,
  # change evenly in between.
  def fill(one, two, three, palette)
    low, middle, high = sort(one, two, three)
    ax, ay, az, as = low
    bx, by, bz, bs = middle
    cx, cy, cz, cs = high
    determinant = ((bx - ax) * (cy - ay)) - ((cx - ax) * (by - ay))
    if determinant.abs < THIN
      depth_step = shade_step = depth_down = shade_down = 0.0
    else
      depth_step, depth_down = slopes(low, middle, high, bz - az, cz - az, determinant)
      shade_step, shade_down = slopes(low, middle, high, bs - as, cs - as, determinant)
    end
    long = slope(ax, ay, cx, cy)
    lower = slope(ax, ay, bx, by)
    upper = slope(bx, by, cx, cy)
    y = ay.ceil
    y = 0 if y.negative?
    last = cy.floor
    last = @height - 1 if last >= @height
    while y <= last
      down = y - ay
      from = ax + (down * long)
      to = y < by ? ax + (down * lower) : bx + ((y - by) * upper)
      from, to = to, from if from > to
      x = from.ceil
      fill_row(y, x, to.floor, az + (depth_down * down) + (depth_step * (x - ax)), depth_step,
               as + (shade_down * down) + (shade_step * (x - ax)), shade_step, palette)
      y += 1
    end
  end

  # Draws a line of `thickness` samples between two points [x, y, depth], where nothing lies nearer to the eye.
  def line(from, to, thickness, colour)
    ax, ay, az = from
    dx, dy, dz = to[0] - ax, to[1] - ay, to[2] - az
    steps = [dx.abs, dy.abs, 1].max.ceil
    across = dx.abs > dy.abs ? @width : 1
    offset = -((thickness - 1) / 2)
    (0..steps).each do |step|
      part = step.fdiv(steps)
      x = (ax + (dx * part)).round
      y = (ay + (dy * part)).round
      next unless x.between?(thickness, @width - thickness - 1) && y.between?(thickness, @height - thickness - 1)

      draw_dot((y * @width) + x + (offset * across), across, thickness, az + (dz * part), colour)
    end
  end

  # Whether a triangle covers each sample, as rows of true and false.
  def covered
    @depths.map(&:finite?).each_slice(@width).to_a
  end

  # The picture as the bytes of a PNG file. `background` answers #row(number) with a list of colours, one per pixel.
  # Yields how much is done, from 0 to 1.
  def to_png(background)
    rows = Array.new(@pixel_height) do |row|
      yield row.fdiv(@pixel_height) if block_given? && (row % ROWS_AT_ONCE).zero?
      pixel_row(row, background.row(row))
    end
    Png.encode(@pixel_width, rows)
  end

  private

  def sort(one, two, three)
    one, two = two, one if two[1] < one[1]
    two, three = three, two if three[1] < two[1]
    one, two = two, one if two[1] < one[1]
    [one, two, three]
  end

  # How much x changes from one row to the next.
  def slope(ax, ay, bx, by)
    by == ay ? 0.0 : (bx - ax) / (by - ay)
  end

  # How much a value changes per sample to the right and per row down.
  def slopes(low, middle, high, to_middle, to_high, determinant)
    [((to_middle * (high[1] - low[1])) - (to_high * (middle[1] - low[1]))) / determinant,
     ((to_high * (middle[0] - low[0])) - (to_middle * (high[0] - low[0]))) / determinant]
  end

  # The innermost loop of all: plain local variables only.
  def fill_row(row, first, last, depth, depth_step, shade, shade_step, palette)
    last = @width - 1 if last >= @width
    place = (row * @width) + first
    last_place = (row * @width) + last
    depths = @depths
    colours = @colours
    while place <= last_place
      if depth > depths[place]
        depths[place] = depth
        colours[place] = palette[shade]
      end
      place += 1
      depth += depth_step
      shade += shade_step
    end
  end

  def draw_dot(place, across, thickness, depth, colour)
    thickness.times do
      @colours[place] = colour if depth >= @depths[place]
      place += across
    end
  end

  # Every pixel is the mean of its four samples.
  def pixel_row(row, background)
    upper = @colours[row * SAMPLES * @width, @width]
    lower = @colours[((row * SAMPLES) + 1) * @width, @width]
    bytes = background.each_with_index.map do |behind, pixel|
      left = SAMPLES * pixel
      sum = (upper[left] || behind) + (upper[left + 1] || behind) +
            (lower[left] || behind) + (lower[left + 1] || behind)
      [(sum >> 34) & 255, (sum >> 18) & 255, (sum >> 2) & 255]
    end
    bytes.flatten.pack("C*")
  end
end
