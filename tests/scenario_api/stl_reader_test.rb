# frozen_string_literal: true

require_relative "mesh_fixtures"

class StlReaderTest < Minitest::Test
  include MeshFixtures

  NAN = Float::NAN
  TRIANGLE = [[0, 0, 0], [1, 0, 0], [0, 1, 0]].freeze

  def accept(bytes, triangles, format, note)
    mesh = StlReader.read(write_file("part.stl", bytes))
    assert_equal [triangles, format], [mesh.triangle_count, mesh.format], note
  end

  def refuse(bytes, problem)
    error = assert_raises(StlReader::Unusable) { StlReader.read(write_file("part.stl", bytes)) }
    assert_equal "part.stl #{problem}", error.message
  end

  def test_accepted
    text = ascii_stl(cube)
    accept(text, 12, :ascii, "text")
    accept("\uFEFF#{text}", 12, :ascii, "text with a mark of its encoding")
    accept("\n  #{text.gsub("\n", "\r\n").upcase}", 12, :ascii, "text in capitals with blanks and CR LF")
    accept(text.gsub("endsolid part", "endsolid"), 12, :ascii, "endsolid without a name")
    accept(text + text, 24, :ascii, "several solids")
    accept(text.sub("0 0 0", "nan nan nan"), 12, :ascii, "a normal that is not finite: it is not used")
    accept(binary_stl(cube), 12, :binary, "binary")
    accept(binary_stl(cube, header: "solid part"), 12, :binary, "binary that begins like text")
    accept(binary_stl(cube, header: "solid\n facet normal"), 12, :binary, "binary that begins much like text")
    accept(binary_stl(cube, header: "v 1"), 12, :binary, "binary that begins like another format")
  end

  def test_refused_files_that_are_no_stl_files
    refuse("", "is empty")
    refuse("Dear reader,\n", 'is not an STL file: it is text that does not begin with "solid"')
    refuse("solidified\n", 'is not an STL file: it is text that does not begin with "solid"')
    refuse("# part\nv 0 0 0\nv 1 0 0\n", "is not an STL file: it looks like an OBJ file")
    refuse("ISO-10303-21;\n", "is not an STL file: it looks like a STEP file")
    refuse("PK\x03\x04#{'\0' * 200}", "is not an STL file: it looks like a ZIP archive")
    refuse("\x89PNG\r\n\x1A\n\0".b, "is not an STL file: it looks like a PNG picture")
    refuse("<?xml version='1.0'?>", "is not an STL file: it looks like XML or HTML")
    refuse("\0\1\2", "is not an STL file: it has only 3 bytes and is no text")
  end

  def test_refused_binary_files
    refuse(binary_stl([]), "holds no triangle")
    refuse(binary_stl(cube)[0, 400],
           "is cut off or no STL file: its header announces 12 triangles (684 bytes), but it ends after 6 (400 bytes)")
    refuse(binary_stl(cube, header: "solid part")[0, 400],
           "is cut off or no STL file: its header announces 12 triangles (684 bytes), but it ends after 6 (400 bytes)")
    refuse(binary_stl(cube, count: 4_294_967_295),
           "is cut off or no STL file: its header announces 4294967295 triangles (214748364834 bytes), " \
           "but it ends after 12 (684 bytes)")
    refuse(binary_stl(cube, count: 11),
           "has a wrong triangle count: its header announces 11 triangles (634 bytes), but 50 more bytes follow")
    refuse(binary_stl([TRIANGLE, [[0, 0, 0], [1, NAN, 0], [0, 1, 0]]]),
           "has a coordinate that is not a finite number (NaN) in triangle 2")
    refuse(binary_stl([[[0, 0, -Float::INFINITY], [1, 0, 0], [0, 1, 0]]]),
           "has a coordinate that is not a finite number (-Infinity) in triangle 1")
  end

  def test_refused_texts
    text = ascii_stl([TRIANGLE])
    refuse("solid part\nendsolid part\n", "holds no triangle")
    refuse("solid part", 'is cut off: it ends after line 1, where "endsolid" should follow')
    refuse(text.lines.take(4).join, 'is cut off: it ends after line 4, where "vertex" should follow')
    refuse(text.lines.take(8).join, 'is cut off: it ends after line 8, where "endsolid" should follow')
    { ["vertex 1 0 0", "vertex 1 0"] => 'line 5 should be "vertex x y z" but is "vertex 1 0"',
      ["vertex 1 0 0", "vertex 1 nan 0"] => 'line 5 has the coordinate "nan", which is not a finite number',
      ["vertex 1 0 0", "vertex 1e39 0 0"] => 'line 5 has the coordinate "1e39", which is not a finite number',
      ["vertex 1 0 0", "vertex 1,5 0 0"] => 'line 5 has the coordinate "1,5", which is not a number',
      ["endloop", "vertex 1 1 1"] => 'line 7 should be "endloop" but is "vertex 1 1 1"',
      ["outer loop", "loop"] => 'line 3 should be "outer loop" but is "loop"',
      ["facet normal", "face"] => 'line 2 should be "facet normal" or "endsolid" but is "face 0 0 0"',
      ["endsolid part", "endsolid\nend"] => 'line 10 should be "solid" but is "end"',
      ["vertex 1 0 0", "\xFF" * 50] => "line 5 should be \"vertex x y z\" but is \"#{'?' * 40}...\"",
      ["endloop", "x" * 2000] => "line 7 is longer than 1024 characters" }.each do |(from, to), problem|
      refuse(text.sub(from, to), "is not a valid STL text: #{problem}")
    end
  end

  def test_a_file_that_cannot_be_opened_is_refused_too
    error = assert_raises(StlReader::Unusable) { StlReader.read(File.join(@root, "missing.stl")) }
    assert_equal "missing.stl cannot be read: No such file or directory", error.message
  end

  def test_more_triangles_than_the_limit_are_refused_before_they_are_read
    path = write_file("part.stl", [nil, StlReader::TRIANGLE_LIMIT + 1].pack("a80V"))
    File.truncate(path, 84 + (50 * (StlReader::TRIANGLE_LIMIT + 1)))
    error = assert_raises(StlReader::Unusable) { StlReader.read(path) }
    assert_equal "part.stl holds 2000001 triangles; this scenario takes at most 2000000", error.message
  end

  def test_tells_how_much_has_been_read
    done = []
    StlReader.read(write_file("part.stl", binary_stl(cube * 1000))) { |part| done << part }
    assert_operator done.size, :>=, 6
    assert_equal done.sort, done
    assert(done.all? { |part| part.between?(0, 1) })
  end
end
