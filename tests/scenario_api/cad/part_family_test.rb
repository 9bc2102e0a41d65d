# frozen_string_literal: true

require_relative "cad_fixtures"
require_relative "../mesh_fixtures"
require File.join(EXAMPLES_FOLDER, "lib/cad/family_table")

class PartFamilyTest < Minitest::Test
  include MeshFixtures
  include CadFixtures

  def setup
    super
    CadFixtures.need(self, :openscad)
  end

  def make(script, table, run_argument: "")
    run_example("part_family", write_file("part.scad", script), write_file("table.csv", table), run_argument: run_argument)
  end

  def family
    File.readlines(output("family.csv"), chomp: true).map { |line| line.split(",") }
  end

  def test_each_row_makes_a_part
    assert_equal 0, make("a = 1; b = 1; cube([a, b, 2]);", "name,a,b\nfirst,3,4\nsecond,5,2.5\n"), @stdout
    assert_equal [%w[name triangles x y z volume], %w[first 12 3.0 4.0 2.0 24.0], %w[second 12 5.0 2.5 2.0 25.0]], family
    assert_equal %w[family.csv first.png first.stl second.png second.stl], Dir.children(@output_folder).sort
  end

  # A circle of 48 corners has 24 r^2 sin(2 pi / 48) for its area.
  def test_the_flanges_of_the_examples
    assert_equal 0, run_example("part_family", *%w[flange.scad flanges.csv].map { |name| File.join(INPUTS_FOLDER, name) })
    area = ->(diameter) { 24 * (diameter * diameter / 4.0) * Math.sin(2 * Math::PI / 48) }
    dn50 = (area.call(165) * 18) + (area.call(84) * (45 - 18)) - (area.call(61) * 45) - (4 * area.call(18) * 18)
    assert_in_epsilon dn50, family[1].last.to_f, 1e-5
    assert_equal %w[name DN50 DN80 DN100], family.map(&:first)
    assert_equal ["3 of 4 parts made",
                  "DN100_wrong could not be made: the bolt holes do not fit between hub and rim"], result_texts.sort
  end

  def test_texts_are_texts
    assert_equal 0, make("kind = \"\"; cube(kind == \"a\\\"b\" ? 2 : 1);", "name,kind\nquoted,a\"b\n"), @stdout
    assert_equal "8.0", family[1].last
  end

  def test_parts_for_printers
    assert_equal 0, make("cube(2);", "name,a\nx,1\n", run_argument: "format=3mf"), @stdout
    assert File.binread(output("x.3mf")).start_with?("PK")
  end

  def test_a_family_of_which_nothing_can_be_made_fails
    make("cube(2", "name,a\nx,1\n")
    assert_equal [false, "None of the 1 parts could be made."], [result["succeeded"], result_texts.first]
    make("", "name,a\nempty,1\n")
    refute result["succeeded"]
  end

  def test_tables_that_are_wrong
    { "" => "table.csv holds no rows", "name,a\n../x,1\n" => "table.csv, line 2: \"../x\" is no name for a part: " \
                                                            "letters, digits, - _ and .",
      "name,a;b\nx,1\n" => "table.csv, line 1: \"a;b\" is no name of a variable",
      "name,a\n\nx,1,2\n" => "table.csv, line 3: 3 fields, not 2",
      "name,a\nx,1\nX,2\n" => "table.csv names the part x twice" }.each do |table, problem|
      make("cube(1);", table)
      assert_refused problem
    end
  end

  def test_a_script_that_never_ends_is_stopped
    with_tool("CAD_OPENSCAD", "sleep") { make("", "name,a\nslow,1\n", run_argument: "timeLimit=1") }
    assert_refused_with "None of the 1 parts could be made.", "slow could not be made: OpenSCAD was stopped after 1 seconds"
  end

  def assert_refused_with(*texts)
    assert_equal [false, texts], [result["succeeded"], result_texts]
  end
end
