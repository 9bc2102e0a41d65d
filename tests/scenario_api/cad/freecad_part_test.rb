# frozen_string_literal: true

require_relative "cad_fixtures"
require_relative "../mesh_fixtures"

class FreecadPartTest < Minitest::Test
  include MeshFixtures
  include CadFixtures

  def setup
    super
    %i[draw freecad].each { |key| CadFixtures.need(self, key) }
  end

  def work_on(path, run_argument = "formats=stl,obj,step,iges,brep size=400")
    run_example("freecad_part", path, run_argument: run_argument)
  end

  def test_a_plate_with_holes
    assert_equal 0, work_on(part("plate.step")), "#{@stdout}#{@stderr}"
    report = read_json("output/report.json")
    holes = [10, 4, 4, 4, 4]
    assert_in_epsilon 40_000 - holes.sum { |radius| Math::PI * radius * radius * 10 }, report["volume"], 1e-9
    area = 10_600 + holes.sum { |radius| (20 * Math::PI * radius) - (2 * Math::PI * radius * radius) }
    assert_in_epsilon area, report["area"], 1e-9
    assert_equal [true, 1, 11], report.values_at("valid", "solids", "faces")
    assert_equal %w[picture.png plate.brep plate.iges plate.obj plate.step plate.stl report.json],
                 Dir.children(@output_folder).sort
    assert MeshSummary.new(output("plate.stl")).topology.closed?
  end

  def test_damaged_and_open_parts
    work_on(part("cut_off.step"))
    assert_refused "cut_off.step is cut off: its last line, END-ISO-10303-21;, is missing"
    work_on(part("cover_unclosed.step"))
    assert_equal ["cover_unclosed.step: 80 x 60 x 20 mm, no solid, no volume"], result_texts.take(1)
  end

  def test_what_the_tool_could_read_of_a_file_is_not_the_whole
    iges = File.read(part("plate.iges")).sub(/^(144),(\d)/) { "#{Regexp.last_match(1)},0" }
    work_on(write_file("part.iges", iges))
    assert_refused "part.iges is damaged: only 10 of its 11 faces could be read"
  end

  def test_a_tool_that_says_nothing_has_not_succeeded
    with_tool("CAD_FREECAD", "exit 0") { work_on(part("plate.step")) }
    assert_refused "plate.step: FreeCAD stopped half way; the log says more"
  end
end
