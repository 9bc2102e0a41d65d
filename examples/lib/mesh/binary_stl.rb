# frozen_string_literal: true

# Binary STL: 80 bytes of free text, the number of triangles, and 50 bytes per triangle.
class BinaryStl
  HEADER_SIZE = 84
  TRIANGLE_SIZE = 50
  TRIANGLES_AT_ONCE = 2000

  # A triangle's three corners; its normal and its attribute are passed over.
  CORNERS = "x12e9x2"

  # Whether the file has exactly the size that its number of triangles asks for.
  def self.exact_size?(file, start)
    start.size >= HEADER_SIZE && file.size == HEADER_SIZE + (TRIANGLE_SIZE * announced_count(start))
  end

  def self.announced_count(start)
    start.unpack1("V", offset: 80)
  end

  def initialize(file)
    @file = file
  end

  # See StlReader.read.
  def read
    count = read_count
    coordinates = []
    0.step(count - 1, TRIANGLES_AT_ONCE) do |first|
      yield first.fdiv(count) if block_given?
      coordinates.concat(read_triangles(first, [TRIANGLES_AT_ONCE, count - first].min))
    end
    Mesh.new(coordinates, :binary)
  end

  private

  def read_count
    check(@file.size >= HEADER_SIZE, "is not an STL file: it has only #{@file.size} bytes and is no text")
    count = self.class.announced_count(@file.read(HEADER_SIZE))
    check_size(count)
    check(count <= StlReader::TRIANGLE_LIMIT,
          "holds #{count} triangles; this scenario takes at most #{StlReader::TRIANGLE_LIMIT}")
    count
  end

  def check_size(count)
    announced = "its header announces #{count} triangles (#{HEADER_SIZE + (TRIANGLE_SIZE * count)} bytes)"
    present = (@file.size - HEADER_SIZE) / TRIANGLE_SIZE
    surplus = @file.size - HEADER_SIZE - (TRIANGLE_SIZE * count)
    check(surplus >= 0, "is cut off or no STL file: #{announced}, but it ends after #{present} (#{@file.size} bytes)")
    check(surplus <= 0, "has a wrong triangle count: #{announced}, but #{surplus} more bytes follow")
  end

  def read_triangles(first, count)
    bytes = @file.read(TRIANGLE_SIZE * count)
    check(bytes && bytes.size == TRIANGLE_SIZE * count, "became shorter while it was read")
    values = bytes.unpack(CORNERS * count)
    check_finite(values, first)
    values
  end

  # The sum of 32-bit values is finite exactly when all of them are.
  def check_finite(values, first)
    return if values.sum.finite?

    place = values.index { |value| !value.finite? }
    raise StlReader::Unusable, "has a coordinate that is not a finite number (#{values[place]}) " \
                               "in triangle #{first + (place / 9) + 1}"
  end

  def check(condition, problem)
    raise StlReader::Unusable, problem unless condition
  end
end
