# frozen_string_literal: true

require_relative "cad_fixtures"

# The figures are those of theory, computed here from the sizes of the parts.
class PartReportTest < Minitest::Test
  include CadFixtures

  # Relative; far below what a wrong unit, a lost face or an approximation by triangles would make of a figure.
  EXACT = 1e-9

  HOLES = [10, 4, 4, 4, 4].freeze # radii of the plate's

  PLATE = { volume: (80 * 50 * 10) - HOLES.sum { |radius| Math::PI * radius * radius * 10 },
            area: (2 * ((80 * 50) + (80 * 10) + (50 * 10))) +
                  HOLES.sum { |radius| (2 * Math::PI * radius * 10) - (2 * Math::PI * radius * radius) } }.freeze

  def setup
    super
    CadFixtures.need(self, :draw)
  end

  def report_on(*names, run_argument: "size=400")
    exit_code = run_example("part_report", *names.map { |name| part(name) }, run_argument: run_argument)
    assert_equal 0, exit_code, "#{@stdout}#{@stderr}"
    read_json("output/report.json") if names.size == 1
  end

  def assert_figures(report, volume, area, size)
    assert_in_epsilon volume, report["volume"], EXACT
    assert_in_epsilon area, report["area"], EXACT
    report["boundingBox"]["size"].zip(size).each { |found, expected| assert_in_delta expected, found, 1e-6 }
  end

  def test_a_box
    report = report_on("box.step")
    assert_figures(report, 40 * 30 * 20, 2 * ((40 * 30) + (40 * 20) + (30 * 20)), [40, 30, 20])
    assert_equal [true, 1, 6, 12], report.values_at("valid", "solids", "faces", "edges")
    assert_in_epsilon 40 * 30 * 20 * 7.85 / 1000, report["massInGrams"], 1e-8
    assert_equal ["box.step: 40 x 30 x 20 mm, 1 solid, 24000 mm3, 188.4 g"], result_texts
  end

  def test_a_cylinder
    assert_figures(report_on("cylinder.step"), Math::PI * 100 * 30, (2 * Math::PI * 10 * 30) + (2 * Math::PI * 100),
                   [20, 20, 30])
  end

  def test_a_plate_with_holes_in_each_format
    %w[plate.step plate.brep plate.iges].each do |name|
      report = report_on(name)
      assert_figures(report, PLATE[:volume], PLATE[:area], [80, 50, 10])
      report["center"].zip([40, 25, 5]) { |found, expected| assert_in_delta expected, found, 1e-9 }
      assert_equal [11, true], report.values_at("faces", "valid"), name
      assert_equal [name == "plate.iges" ? 0 : 1, name == "plate.iges" ? 0 : nil],
                   report.values_at("solids", "freeEdges")
    end
  end

  def test_an_assembly_is_the_sum_of_its_parts
    block = report_on("bearing_block.step")["volume"]
    report = report_on("shaft_unit.step")
    collar = Math::PI * ((26**2) - (18**2)) * 12
    sum = (2 * block) + (Math::PI * (17.9**2) * 260) + (2 * collar)
    assert_in_epsilon sum, report["volume"], 1e-6 # the block's curves of intersection are approximations
    assert_equal 5, report["solids"]
  end

  def test_an_open_part_has_no_volume
    report = report_on("cover_unclosed.step")
    assert_equal [nil, nil, 4], report.values_at("volume", "massInGrams", "freeEdges")
    assert_equal ["cover_unclosed.step: 80 x 60 x 20 mm, 5 faces, no volume",
                  "cover_unclosed.step: its faces do not close (4 free edges), so that it has no volume"], result_texts
  end

  def test_the_mass_is_that_of_the_chosen_material
    report = report_on("box.step", run_argument: "aluminium density=2.5 size=400")
    assert_in_epsilon 60, report["massInGrams"], 1e-8
  end

  def test_several_inputs_with_odd_names
    odd = File.join(make_folder("Größe [1] $x"), "Teil; ü'.step")
    FileUtils.cp(part("box.step"), odd)
    assert_equal 0, run_example("part_report", odd, part("cylinder.step"), run_argument: "size=400"), @stdout
    assert_equal ["Teil; ü'_picture.png", "Teil; ü'_report.json", "cylinder_picture.png", "cylinder_report.json"],
                 Dir.children(@output_folder).sort
    assert_includes result_texts, "Teil; ü'.step: 40 x 30 x 20 mm, 1 solid, 24000 mm3, 188.4 g"
  end

  def test_the_version_of_the_tool_is_recorded
    report_on("box.step")
    tools = read_json("work/used_tools.json")
    assert_includes tools["tools"].map { |tool| tool["name"] }, "Open CASCADE"
    assert_includes tools["files"].map { |path| File.basename(path) }, "report.tcl"
  end

  def test_other_files_are_refused
    run_example("part_report", write_file("part.stl", "solid"))
    assert_refused "part.stl is refused: STEP, IGES and BREP files are taken"
    run_example("part_report", File.join(@root, "gone.step"))
    assert_refused "gone.step cannot be read: No such file or directory"
    run_example("part_report")
    assert_refused "No input file was given; choose STEP, IGES or BREP files."
  end
end
