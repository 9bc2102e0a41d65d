# frozen_string_literal: true

require_relative "cad_fixtures"
require_relative "damage"

# A damaged file ends in a message that names it. What counts as success has its warning, or has the very figures of the
# whole file: the damage was where it means nothing. Nothing hangs: the scenario stops its tool after the time limit.
class DamagedPartsTest < Minitest::Test
  include CadFixtures

  SEED = 20_261_123
  WARNING = 1 # the code of a message
  FIGURES = %w[volume area faces solids].freeze

  def setup
    super
    CadFixtures.need(self, :draw)
  end

  def report_on(path)
    exit_code = run_example("part_report", path, run_argument: "size=400 timeLimit=120")
    assert_includes [0, 1], exit_code, @stderr
    result
  end

  def figures
    read_json("output/report.json").values_at(*FIGURES)
  end

  def same?(found, real)
    found.zip(real).all? { |one, other| one == other || (one && other && (one - other).abs <= 1e-6 * other.abs) }
  end

  def assert_honest(name, found, real)
    texts = found["messages"].map { |message| message["text"] }
    assert texts.all? { |text| text.include?(name) }, "#{name}: #{texts}"
    refute texts.any? { |text| text.match?(/Error\)|undefined|nil\b/) }, "#{name}: #{texts}"
    return unless found["succeeded"]

    warned = found["messages"].any? { |message| message["code"] == WARNING }
    assert warned || same?(figures, real), "#{name} is taken for whole: #{figures}, really #{real}"
  end

  def assert_all_honest(source)
    assert report_on(part(source))["succeeded"]
    real = figures
    corpus = Damage.new(File.binread(part(source)), SEED).corpus
    assert_equal 30, corpus.size
    corpus.each do |kind, bytes|
      name = kind + File.extname(source)
      assert_honest(name, report_on(write_file(name, bytes)), real)
    end
  end

  def test_no_scenario_makes_anything_of_a_damaged_file
    { "convert_part" => 1, "drawing_sheet" => 1, "compare_parts" => 2, "parts_list" => 1 }.each do |scenario, inputs|
      assert_equal 1, run_example(scenario, *[part("cut_off.step")] * inputs), scenario
      assert_refused "cut_off.step is cut off: its last line, END-ISO-10303-21;, is missing"
    end
  end

  def test_what_the_tool_could_read_of_a_file_is_not_the_whole
    iges = File.read(part("plate.iges")).sub(/^(144),(\d)/) { "#{Regexp.last_match(1)},0" }
    run_example("part_report", write_file("part.iges", iges))
    assert_refused "part.iges is damaged: only 10 of its 11 faces could be read"
  end

  def test_damaged_step_files
    assert_all_honest("plate.step")
  end

  def test_damaged_iges_files
    assert_all_honest("plate.iges")
  end

  def test_damaged_brep_files
    assert_all_honest("plate.brep")
  end
end
