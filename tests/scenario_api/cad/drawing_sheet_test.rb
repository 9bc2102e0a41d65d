# frozen_string_literal: true

require_relative "cad_fixtures"
require File.join(EXAMPLES_FOLDER, "lib/drawing/drawing_sheet")

class DrawingSheetTest < Minitest::Test
  include CadFixtures

  # How much longer an edge is than it is drawn in a view from aslant, for edges along the axes.
  ASLANT = Math.sqrt(2.0 / 3)

  def setup
    super
    CadFixtures.need(self, :draw)
  end

  def draw(name)
    assert_equal 0, run_example("drawing_sheet", part(name)), "#{@stdout}#{@stderr}"
    @sheet = DrawingSheet.read(File.join(@work_dir, "edges.txt"), name)
  end

  def lines(view, visible)
    @sheet.lines.select { |line| line.view == view && line.visible == visible }
  end

  def length(lines)
    lines.sum { |line| line.points.each_cons(2).sum { |(ax, ay), (bx, by)| Math.hypot(bx - ax, by - ay) } }
  end

  def test_a_box_shows_nine_of_its_twelve_edges
    draw("box.step")
    assert_equal [9, 3], [lines("aslant", true).size, lines("aslant", false).size]
    assert_in_delta 3 * (40 + 30 + 20) * ASLANT, length(lines("aslant", true)), 1e-4
    assert_in_delta (40 + 30 + 20) * ASLANT, length(lines("aslant", false)), 1e-4
    { "front" => [40, 20], "top" => [40, 30], "left" => [30, 20] }.each do |view, sides|
      assert_in_delta 2 * sides.sum, length(lines(view, true)), 1e-4, view
    end
  end

  def test_the_views_stand_where_third_angle_projection_has_them
    draw("plate.step")
    low = %w[front top left aslant].to_h do |view|
      [view, lines(view, true).flat_map(&:points).transpose.map(&:min)]
    end
    assert_equal low["front"][0].round(4), low["top"][0].round(4)
    assert_equal low["front"][1].round(4), low["left"][1].round(4)
    assert_operator low["top"][1], :>, low["front"][1] + 10
    assert_operator low["left"][0] + 50, :<, low["front"][0]
    assert_operator low["aslant"][0], :>, low["front"][0] + 80
  end

  def test_holes_are_circles_from_the_top_and_hidden_lines_from_the_front
    draw("plate.step")
    corner = lines("top", true).flat_map(&:points).transpose.map(&:min)
    circles = 2 * Math::PI * (10 + (4 * 4))
    assert_in_epsilon circles + (2 * (80 + 50)), length(lines("top", true)), 1e-3
    bore = lines("top", true).flat_map(&:points).select { |x, y| Math.hypot(x - corner[0] - 40, y - corner[1] - 25) < 15 }
    bore.each { |x, y| assert_in_delta 10, Math.hypot(x - corner[0] - 40, y - corner[1] - 25), 1e-4 }
    left = lines("front", true).flat_map(&:points).map(&:first).min
    hidden = lines("front", false).select { |line| line.points.map { |x, _| x.round(4) }.uniq.size == 1 }
    assert_empty [4.0, 12.0, 30.0, 50.0, 68.0, 76.0] - hidden.map { |line| (line.points[0][0] - left).round(3) }
  end

  def test_the_dxf_file_holds_the_same_lines_one_to_one
    draw("box.step")
    pairs = File.readlines(output("drawing.dxf"), chomp: true).each_slice(2).map { |code, value| [code.to_i, value] }
    assert_equal [[0, "SECTION"], [0, "EOF"]], [pairs.first, pairs.last]
    assert_equal @sheet.lines.size, pairs.count([0, "LINE"])
    assert_equal @sheet.lines.count { |line| !line.visible }, pairs.each_cons(2).count([[0, "LINE"], [8, "HIDDEN"]])
    widths = pairs.select { |code, _| [10, 11].include?(code) }.map { |_, value| value.to_f }
    assert_in_delta @sheet.size[0], widths.max, 1e-4
  end

  def test_the_svg_file_is_xml_and_shows_name_and_size
    name = File.join(make_folder("in"), "a & <b>.step")
    FileUtils.cp(part("box.step"), name)
    assert_equal 0, run_example("drawing_sheet", name), @stdout
    svg = File.read(output("drawing.svg"))
    assert_includes svg, "a &amp; &lt;b&gt;.step   40 x 30 x 20 mm"
    assert_equal 2, svg.scan(/<path id="(?:hidden|visible)"[^>]* d="M[^"]+"/).size
  end

  # A tool that draws nothing, or not all of it, has not succeeded.
  def test_views_that_do_not_show_the_whole_part_are_no_success
    views = %w[top front left aslant].map { |view| "#{view} visible 0 0 40 0 40 20" }.join("\n")
    script = "File.write('edges.txt', #{views.inspect}); " \
             "puts ['VALUE box_part 0 0 0 40 30 20', 'DONE '].map { |line| ENV['SETTING_TOKEN'] + ' ' + line }"
    with_tool("CAD_DRAW", script) { run_example("drawing_sheet", part("box.step")) }
    assert_refused "box.step could not be drawn: the views do not show all of it"
    with_tool("CAD_DRAW", script.sub("visible 0", "")) { run_example("drawing_sheet", part("box.step")) }
    refute result["succeeded"]
  end

  def test_it_takes_one_input
    run_example("drawing_sheet", part("box.step"), part("box.step"))
    assert_refused "One input file is needed, not 2."
  end
end
