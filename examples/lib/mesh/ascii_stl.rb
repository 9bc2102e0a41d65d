# frozen_string_literal: true

# STL as text: "solid", then per triangle "facet normal", "outer loop", three "vertex", "endloop" and "endfacet".
class AsciiStl
  LINE_LIMIT = 1024
  LINES_AT_ONCE = 10_000

  # The largest 32-bit floating point number.
  LARGEST = 3.4028234663852886e38

  # The lines of one triangle, each as its first words.
  TRIANGLE = ["facet normal", "outer loop", "vertex", "vertex", "vertex", "endloop", "endfacet"].freeze

  def initialize(file)
    @file = file
    @coordinates = []
    @line_number = 0
    @inside_solid = false
    @position = 0 # in TRIANGLE
  end

  # See StlReader.read. A file may hold several solids; they become one mesh.
  def read
    size = @file.size
    @file.each_line("\n", LINE_LIMIT) do |line|
      yield [@file.pos.fdiv(size), 1.0].min if block_given? && (@line_number % LINES_AT_ONCE).zero?
      @line_number += 1
      refuse("is longer than #{LINE_LIMIT} characters") if line.size == LINE_LIMIT
      take(line.split)
    end
    check_end
    Mesh.new(@coordinates, :ascii)
  end

  private

  def take(words)
    return if words.empty?
    return take_vertex(words) if @position.between?(2, 4)
    return take_between_triangles(words) if @position.zero? && !facet?(words)

    expected = TRIANGLE[@position]
    refuse_words(expected, words) unless words.first(expected.count(" ") + 1).join(" ").downcase == expected
    @position = (@position + 1) % TRIANGLE.size
  end

  def facet?(words)
    @inside_solid && words.first.casecmp?("facet")
  end

  def take_between_triangles(words)
    expected = @inside_solid ? "endsolid" : "solid"
    # A mark of the encoding may stand before the first word.
    keyword = words.first.delete_prefix("\xEF\xBB\xBF".b)
    refuse_words(@inside_solid ? "facet normal\" or \"endsolid" : expected, words) unless keyword.casecmp?(expected)
    @inside_solid = !@inside_solid
  end

  def take_vertex(words)
    refuse_words("vertex x y z", words) unless words.size == 4 && words.first.casecmp?("vertex")

    @coordinates.push(number(words[1]), number(words[2]), number(words[3]))
    @position += 1
    too_many if @coordinates.size > 9 * StlReader::TRIANGLE_LIMIT
  end

  def number(word)
    value = Float(word, exception: false)
    return value if value && value.abs <= LARGEST

    kind = value || word.match?(/\A[+-]?(nan|inf)/i) ? "finite number" : "number"
    refuse("has the coordinate \"#{quote(word)}\", which is not a #{kind}")
  end

  def check_end
    return if @position.zero? && !@inside_solid

    missing = @position.zero? ? "endsolid" : TRIANGLE[@position]
    raise StlReader::Unusable, "is cut off: it ends after line #{@line_number}, where \"#{missing}\" should follow"
  end

  def too_many
    raise StlReader::Unusable, "holds too many triangles; this scenario takes at most #{StlReader::TRIANGLE_LIMIT}"
  end

  def refuse_words(expected, words)
    refuse("should be \"#{expected}\" but is \"#{quote(words.join(' '))}\"")
  end

  def refuse(problem)
    raise StlReader::Unusable, "is not a valid STL text: line #{@line_number} #{problem}"
  end

  def quote(text)
    text = text.dup.force_encoding(Encoding::UTF_8).scrub("?")
    text.length > 40 ? "#{text[0, 40]}..." : text
  end
end
