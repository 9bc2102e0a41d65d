# frozen_string_literal: true

# A triangle mesh as it stands in the file: every triangle with its own three corners.
class Mesh
  # All corners one after another: nine Floats (x, y, z of three corners) per triangle, each exactly a 32-bit value.
  attr_reader :coordinates

  # :ascii or :binary
  attr_reader :format

  # Rounds to 32 bits, so that a mesh is the same whether it was written as text or binary; -0.0 becomes 0.0.
  def initialize(coordinates, format)
    @coordinates = coordinates.pack("e*").unpack("e*").map! { |value| value + 0.0 }
    @format = format
  end

  def triangle_count
    coordinates.size / 9
  end
end
