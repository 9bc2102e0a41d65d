# frozen_string_literal: true

# Whether the bytes of a BREP file (Open CASCADE's own text format) are complete.
module BrepFile
  START = /^CASCADE Topology V[1-3]/n

  # Sections with the number of their elements, in their order.
  SECTIONS = %w[Locations Curve2ds Curves Polygon3D PolygonOnTriangulations Surfaces Triangulations TShapes].freeze
  SHAPE = /^(?:Ve|Ed|Wi|Fa|Sh|So|CS|Co)[ \t]*\r?$/n
  ROOT = /\A\s*[+-]\d+\s+\d+/n

  # Returns what is wrong, or nil, and how many faces the file holds.
  def self.examine(bytes)
    return "is not a BREP file: \"CASCADE Topology\" is missing" unless bytes.byteslice(0, 4096).match?(START)

    position = bytes.index(/[^\t\n\r\x20-\x7E]/n)
    return "is damaged: it holds bytes that are no text, at byte #{position}" if position

    found = bytes.scan(/^(#{SECTIONS.join("|")}) +(\d+)/n)
    missing = (SECTIONS - found.map(&:first)).first
    return "is cut off or damaged: its section #{missing} is missing" if missing
    return "is damaged: its sections are not in their order" unless found.map(&:first) == SECTIONS

    examine_shapes(bytes.partition(/^TShapes +\d+/n).last, found.last.last.to_i)
  end

  def self.examine_shapes(text, announced)
    kinds = text.scan(SHAPE).map(&:strip)
    if kinds.size != announced
      return "is cut off or damaged: it announces #{announced} shapes, but holds #{kinds.size}"
    end
    return "is cut off: the reference to its shape is missing" unless text.rpartition("*").last.match?(ROOT)

    faces = kinds.count("Fa")
    faces.zero? ? "holds no faces" : [nil, faces]
  end
  private_class_method :examine_shapes
end
