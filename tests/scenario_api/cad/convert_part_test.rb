# frozen_string_literal: true

require_relative "cad_fixtures"
require_relative "../mesh_fixtures"
require "open3"
require "zlib"

class ConvertPartTest < Minitest::Test
  include CadFixtures

  PLATE_VOLUME = 40_000 - (10 * Math::PI * ((10 * 10) + (4 * 4 * 4)))

  def setup
    super
    CadFixtures.need(self, :draw)
  end

  def convert(name, run_argument)
    exit_code = run_example("convert_part", part(name), run_argument: run_argument)
    assert_equal 0, exit_code, "#{@stdout}#{@stderr}"
  end

  def test_a_converted_solid_is_the_same_solid
    convert("plate.step", "exchange")
    made = %w[step iges brep].map { |format| output("plate.#{format}") }
    made.each do |path|
      assert_equal 0, run_example("part_report", path, run_argument: "size=400"), @stdout
      assert_in_epsilon PLATE_VOLUME, read_json("output/report.json")["volume"], 1e-9, path
    end
  end

  # The holes become polygons inside of their circles, so that the mesh holds a little more than the part.
  def test_a_mesh_comes_near_the_part_as_its_deflection_shrinks
    errors = %w[0.01 0.001 0.0001].map do |deflection|
      convert("plate.step", "print formats=stl angle=90 deflection=#{deflection}")
      MeshSummary.new(output("plate.stl")).measures.volume - PLATE_VOLUME
    end
    assert_equal errors.sort.reverse, errors
    assert_operator errors.last, :>, 0
    assert_operator errors.last, :<, 1e-3 * PLATE_VOLUME
  end

  def test_the_mesh_is_closed_and_text_formats_hold_its_triangles
    convert("plate.step", "print formats=stl,obj,wrl")
    mesh = MeshSummary.new(output("plate.stl"))
    assert_predicate mesh.topology, :closed?
    assert_equal mesh.mesh.triangle_count, File.foreach(output("plate.obj")).count { |line| line.start_with?("f ") }
    assert File.binread(output("plate.wrl")).start_with?("#VRML V2.0")
  end

  def test_a_glb_file_holds_the_size_in_metres
    convert("plate.step", "web")
    bytes = File.binread(output("plate.glb"))
    json = JSON.parse(bytes.byteslice(20, bytes.unpack1("V", offset: 12)))
    places = json["meshes"].flat_map { |mesh| mesh["primitives"] }.map { |part| part["attributes"]["POSITION"] }
    low, high = %w[min max].map { |end_| places.map { |place| json["accessors"][place][end_] }.transpose }
    size = high.map(&:max).zip(low.map(&:min)).map { |to, from| to - from }
    size.sort.zip([0.01, 0.05, 0.08]) { |found, expected| assert_in_delta expected, found, 1e-6 }
  end

  # The content of a file in a ZIP archive whose entries follow one another.
  def unzip(bytes, name)
    place = bytes.index("#{name}".b) - 30
    size, name_size = bytes.unpack("@#{place + 18}V@#{place + 26}v")
    Zlib::Inflate.new(-Zlib::MAX_WBITS).inflate(bytes.byteslice(place + 30 + name_size, size))
  end

  def test_a_3mf_file_holds_the_mesh_in_millimetres
    convert("plate.step", "print")
    model = unzip(File.binread(output("plate.3mf")), "3D/3dmodel.model")
    points = model.scan(/<vertex x="(\S+)" y="(\S+)" z="(\S+)"/).map { |point| point.map(&:to_f) }
    triangles = model.scan(/<triangle v1="(\d+)" v2="(\d+)" v3="(\d+)"/).map { |corners| corners.map(&:to_i) }
    mesh = MeshSummary.new(output("plate.stl"))
    assert_includes model, 'unit="millimeter"'
    assert_equal [mesh.topology.vertex_count, mesh.mesh.triangle_count], [points.size, triangles.size]
    volume = triangles.sum do |corners|
      a, b, c = points.values_at(*corners)
      ((a[0] * ((b[1] * c[2]) - (b[2] * c[1]))) + (a[1] * ((b[2] * c[0]) - (b[0] * c[2]))) +
        (a[2] * ((b[0] * c[1]) - (b[1] * c[0])))) / 6
    end
    assert_in_epsilon mesh.measures.volume, volume, 1e-5
  end

  def test_unknown_formats_are_refused
    run_example("convert_part", part("box.step"), run_argument: "formats=stl,dwg")
    assert_refused 'The formats are "stl,dwg"; possible are: stl, 3mf, glb, obj, wrl, step, iges, brep.'
    run_example("convert_part", part("box.step"), run_argument: 'formats=""')
    assert_refused 'The formats are ""; possible are: stl, 3mf, glb, obj, wrl, step, iges, brep.'
  end

  # DRAWEXE says nothing when it writes no file.
  def test_a_file_that_was_not_written_is_no_success
    script = 'puts %w[VALUE\ triangles_part\ 12 DONE\ ].map { |line| ENV["SETTING_TOKEN"] + " " + line }'
    with_tool("CAD_DRAW", script) { run_example("convert_part", part("box.step"), run_argument: "formats=glb") }
    assert_refused "box.step could not be converted: the GLB file was not written"
  end
end
