# frozen_string_literal: true

require_relative "mesh_fixtures"
require "zlib"

class MeshReportTest < Minitest::Test
  include MeshFixtures

  SCENARIO = File.join(EXAMPLES_FOLDER, "scenarios/mesh_report.rb")

  def report_on(*paths, run_argument: "size=400")
    run_script(SCENARIO, inputFiles: paths, runArgument: run_argument)
  end

  def refuse(path, problem)
    assert_equal 1, report_on(path)
    assert_equal [problem], result_texts
    refute result["succeeded"]
    assert_empty @stderr
    assert_empty Dir.children(@output_folder)
  end

  # Width, height and rows of pixels as [red, green, blue], from a picture in the format of the example.
  def read_picture(name)
    bytes = File.binread(File.join(@output_folder, name))
    assert_equal "\x89PNG\r\n\x1A\n".b, bytes[0, 8]
    width, height, *kind = bytes.unpack("x16N2C5")
    assert_equal [8, 2, 0, 0, 0], kind
    data = Zlib.inflate(bytes[41, bytes.unpack1("x33N")])
    assert_equal height * (1 + (3 * width)), data.size
    rows = data.unpack("xa#{3 * width}" * height).map { |row| row.unpack("C*").each_slice(3).to_a }
    [width, height, rows]
  end

  def red?(pixel)
    pixel[0] > 150 && pixel[1] < 100 && pixel[2] < 100
  end

  def test_reports_on_one_input
    path = write_file("cube.stl", binary_stl(cube))
    assert_equal 0, report_on(path), @stderr
    report = read_json("output/report.json")
    assert_equal ["cube.stl", 12, 600, 1000, "picture.png"],
                 report.values_at("file", "triangles", "surface", "volume", "picture")
    assert_equal %w[picture.png report.json].map { |name| File.join(@output_folder, name) }, result["outputFiles"]
    assert_equal ["cube.stl: 12 triangles, 10.0 x 10.0 x 10.0"], result_texts
    assert_empty @stderr
  end

  def test_reports_on_several_inputs_of_the_same_name
    paths = %w[one two].map { |folder| make_folder(folder) && write_file("#{folder}/cube.stl", ascii_stl(cube)) }
    assert_equal 0, report_on(*paths, write_file("open box.stl", binary_stl(open_box))), @stderr
    assert_equal ["cube_2_picture.png", "cube_2_report.json", "cube_picture.png", "cube_report.json",
                  "open box_picture.png", "open box_report.json"], Dir.children(@output_folder).sort
  end

  def test_a_mesh_with_holes_is_reported_with_a_warning
    assert_equal 0, report_on(write_file("box.stl", binary_stl(open_box)))
    assert_includes result["messages"],
                    { "code" => 1, "text" => "box.stl is not closed (4 open edges): its volume is not reliable" }
  end

  # The warnings about a mesh; the other messages give its size.
  def warnings(triangles)
    assert_equal 0, report_on(write_file("part.stl", binary_stl(triangles))), @stderr
    result["messages"].select { |message| message["code"] == 1 }.map { |message| message["text"] }
  end

  def test_parts_that_touch_along_an_edge_are_called_that
    touching = cube.zip(box([10, 10, 0], [20, 20, 10])).flatten(1) # in turn, so that their order means nothing
    assert_equal ["part.stl consists of parts that touch (1 edge with 4 triangles instead of 2): its volume is the " \
                  "sum of their volumes"], warnings(touching)
    assert_equal [2000, false, 0, 1], read_json("output/report.json").values_at("volume", "closed", "openEdges",
                                                                                "nonManifoldEdges")
  end

  def test_a_wall_inside_of_a_part_is_no_sum_of_parts
    wall = box([0, 0, 0], [10, 10, 10], SIDES.take(1))
    assert_equal ["part.stl is not closed (5 edges with 3 to 4 triangles instead of 2): its volume is not reliable"],
                 warnings(cube + wall)
  end

  def test_turned_triangles_are_not_called_open_edges
    triangles = cube
    triangles[0] = triangles[0].reverse
    assert_equal ["part.stl is not closed (3 edges whose triangles face opposite ways): its volume is not reliable"],
                 warnings(triangles)
  end

  def test_all_that_keeps_a_mesh_from_being_closed_is_named
    assert_equal ["part.stl is not closed (2 open edges, 1 edge with 3 triangles instead of 2): its volume is not " \
                  "reliable"], warnings(cube + [[[0, 0, 0], [10, 0, 0], [0, -5, -5]]])
  end

  def test_the_picture_shows_the_part_in_the_middle_and_the_background_around_it
    report_on(write_file("cube.stl", binary_stl(cube)))
    width, height, rows = read_picture("picture.png")
    assert_equal [400, 300], [width, height]
    assert_equal [250, 251, 253], rows.first.first
    red, _, blue = rows[(height / 2) + 50][(width / 2) - 50] # the cube's front
    assert_operator blue, :>, red + 20
    refute(rows.flatten(1).any? { |pixel| red?(pixel) })
  end

  def test_the_picture_shows_the_rims_of_holes_in_red
    report_on(write_file("box.stl", binary_stl(open_box)))
    assert_operator read_picture("picture.png").last.flatten(1).count { |pixel| red?(pixel) }, :>, 200
  end

  def test_a_flat_or_degenerate_mesh_is_drawn_all_the_same
    { "flat" => [[[0, 0, 0], [1, 0, 0], [0, 1, 0]]], "edge" => [[[0, 0, 0], [1, 1, 1], [2, 2, 2]]],
      "towards the eye" => [[[0, 0, 0], [1, -1, 1], [2, -2, 2]]], "point" => [[[7, 7, 7]] * 3],
      "far" => [[[1e37, 0, 0], [3e38, 1, 0], [0, 3e38, -3e38]]] }.each do |name, triangles|
      assert_equal 0, report_on(write_file("#{name}.stl", binary_stl(triangles))), "#{name}: #{@stderr}"
      assert_equal [400, 300], read_picture("picture.png").take(2)
    end
  end

  def test_a_fan_of_many_triangles_around_one_vertex_is_drawn
    fan = (0...20_000).map { |step| [[0, 0, 1], rim(step), rim(step + 1)] }
    assert_equal 0, report_on(write_file("fan.stl", binary_stl(fan))), @stderr
  end

  def rim(step)
    [Math.cos(step * Math::PI / 10_000), Math.sin(step * Math::PI / 10_000), 0]
  end

  def test_the_run_argument_chooses_the_picture_size
    path = write_file("cube.stl", binary_stl(cube))
    { "" => 800, "standard" => 800, "large size=1200" => 1200 }.each do |run_argument, width|
      assert_equal 0, report_on(path, run_argument: run_argument), @stderr
      assert_equal width, read_picture("picture.png").first
    end
    assert_equal 1, report_on(path, run_argument: "size=7")
    assert_equal ['The parameter "size" is "7"; allowed are: 400, 800.'], result_texts
  end

  def test_unusable_inputs_fail_with_what_is_wrong
    refuse(File.join(INPUTS_FOLDER, "not_an_stl.stl"), "not_an_stl.stl is not an STL file: it looks like an OBJ file")
    refuse(File.join(@root, "gone.stl"), "gone.stl cannot be read: No such file or directory")
    refuse(write_file("ü.stl", ""), "ü.stl is empty")
    refuse(@root, "#{File.basename(@root)} cannot be read: Is a directory") unless Gem.win_platform?
  end

  def test_no_input_fails
    assert_equal 1, report_on
    assert_equal ["No input file was given; choose one STL file or more."], result_texts
  end

  def test_ends_quietly_when_it_is_cancelled_on_the_way
    path = write_file("many.stl", binary_stl(cube * 9000))
    exit_code = interrupt_script(SCENARIO, inputFiles: [path]) { write_file("work/killprocess", "") }
    assert_equal [3, ""], [exit_code, @stderr]
    refute_result
    assert_empty Dir.children(@output_folder)
  end
end
