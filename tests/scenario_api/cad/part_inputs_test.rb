# frozen_string_literal: true

require_relative "cad_fixtures"

# The parts of the examples, and the files that refer to them.
class PartInputsTest < Minitest::Test
  include CadFixtures

  # Those that the demo takes from the package of the tool.
  FROM_PACKAGE = %w[inputs/screw.step].freeze

  def setup
    super
    CadFixtures.need(self, :draw)
  end

  def jobs(name)
    JSON.parse(File.read(File.join(EXAMPLES_FOLDER, name)))["EnqueueJobs"]
  end

  def test_the_jobs_files_name_inputs_and_scenarios_that_exist
    %w[part_jobs.json long_part_job.json fem_jobs.json].flat_map { |name| jobs(name) }.each do |job|
      assert_path_exists File.join(EXAMPLES_FOLDER, "scenarios", job["scenario"]["id"])
      (job["inputFileSets"].flatten - FROM_PACKAGE).each do |path|
        name = File.basename(path)
        assert [part(name), File.join(INPUTS_FOLDER, name)].any? { |file| File.file?(file) }, path
      end
    end
  end

  def test_the_parts_are_those_that_the_script_lists
    listed = File.read(File.join(INPUTS_FOLDER, "make_parts.rb")).scan(/^# (\w+\.step) /).flatten
    assert_equal listed.sort, Dir.children(CadFixtures.parts).grep(/\.step\z/).sort
  end

  def test_a_tool_that_is_missing_is_named
    output, status = with_variable("CAD_DRAW", @root) do
      Open3.capture2e(*ruby, File.join(INPUTS_FOLDER, "make_parts.rb"), @root)
    end
    refute_predicate status, :success?
    assert_equal "CAD_DRAW names #{@root}, which is no program; set it to the path of Open CASCADE's DRAWEXE, or unset " \
                 "it.\n", output
  end
end
