# frozen_string_literal: true

# The views of a part on one sheet, in third-angle projection: the top view above the front view, the left one left of it,
# the one from aslant to the right. Lengths are those of the part.
class DrawingSheet
  # An edge: its view, whether it can be seen, and its points [x, y] on the sheet.
  Line = Struct.new(:view, :visible, :points)

  # What deviates less from a straight line, relative to its length, is one.
  STRAIGHT = 1e-6

  # Between two views, relative to the largest side of the part.
  GAP = 0.2

  attr_reader :title, :lines

  # `path` is the file of lib/cad/draw/drawing.tcl.
  def self.read(path, title)
    lines = File.foreach(path).map do |text|
      view, kind, *numbers = text.split
      Line.new(view, kind == "visible", simplify(numbers.map { |number| Float(number) }.each_slice(2).to_a))
    end
    raise ArgumentError, "no view has edges" if lines.empty?

    new(lines, title)
  end

  # Without the points that lie between their neighbours.
  def self.simplify(points)
    kept = points.each_cons(3).reject { |triple| straight?(*triple) }.map { |triple| triple[1] }
    [points.first, *kept, points.last]
  end

  def self.straight?(before, point, after)
    dx, dy = after[0] - before[0], after[1] - before[1]
    (((point[0] - before[0]) * dy) - ((point[1] - before[1]) * dx)).abs <= STRAIGHT * ((dx * dx) + (dy * dy))
  end

  def initialize(lines, title)
    @title = title
    @boxes = lines.group_by(&:view).transform_values { |group| box(group) }
    @lines = lines.map { |line| place(line) }
  end

  # The part's size in x, y and z.
  def part_size
    [width("front"), height("top"), height("front")]
  end

  # The sheet's width and height; its lower left corner is the origin.
  def size
    box(lines)[1]
  end

  private

  # The lower left and the upper right corner of lines.
  def box(lines)
    lines.flat_map(&:points).transpose.map(&:minmax).transpose
  end

  def width(view)
    low, high = @boxes.fetch(view)
    high[0] - low[0]
  end

  def height(view)
    low, high = @boxes.fetch(view)
    high[1] - low[1]
  end

  def corners
    gap = GAP * part_size.max
    right = width("left") + gap
    @corners ||= { "left" => [0, 0], "front" => [right, 0], "top" => [right, height("front") + gap],
                   "aslant" => [right + width("front") + gap, 0] }
  end

  def place(line)
    low, = @boxes.fetch(line.view)
    x, y = corners.fetch(line.view)
    Line.new(line.view, line.visible, line.points.map { |px, py| [px - low[0] + x, py - low[1] + y] })
  end
end
