# frozen_string_literal: true

require_relative "mesh_fixtures"
require File.join(INPUTS_FOLDER, "make_inputs")

# The example inputs, and the files that refer to them.
class ExamplesTest < Minitest::Test
  include MeshFixtures

  # Created once for all of these tests, because the large one is slow.
  def self.made
    @made ||= File.join(Dir.mktmpdir("scenario-test-inputs-"), "inputs").tap do |folder|
      Minitest.after_run { FileUtils.remove_entry(File.dirname(folder)) }
      make_inputs(folder)
    end
  end

  def made
    self.class.made
  end

  def figures(name)
    MeshSummary.new(File.join(made, name)).to_h
  end

  def test_the_committed_inputs_are_those_that_are_made
    committed = Dir.glob("*.stl", base: INPUTS_FOLDER).sort
    assert_equal %w[bracket.stl bracket_revision.stl housing.stl not_an_stl.stl torn_flange.stl],
                 committed - ["helical_gear.stl"]
    committed.each do |name|
      assert_equal File.binread(File.join(INPUTS_FOLDER, name)), File.binread(File.join(made, name)), name
    end
  end

  def test_the_parts_are_what_they_are_meant_to_be
    assert_equal [:ascii, true, [80, 60, 72]],
                 figures("bracket.stl").then { |part| [part[:format], part[:closed], part[:boundingBox][:size]] }
    assert_equal [:binary, true], figures("housing.stl").values_at(:format, :closed)
    assert_equal [13, false], figures("torn_flange.stl").values_at(:openEdges, :closed)
    gear = figures("helical_gear.stl")
    assert_operator gear[:triangles], :>, 100_000
    assert_equal [true, 0], gear.values_at(:closed, :degenerateTriangles)
  end

  def test_a_larger_hole_takes_its_cylinder_away_from_the_bracket
    area = ->(radius) { 12 * (radius**2) * Math.sin(2 * Math::PI / 24) }
    removed = figures("bracket.stl")[:volume] - figures("bracket_revision.stl")[:volume]
    assert_in_delta 8 * (area.call(20) - area.call(15)), removed, 0.05
  end

  def test_the_jobs_file_names_inputs_that_exist
    jobs = JSON.parse(File.read(File.join(EXAMPLES_FOLDER, "jobs.json")))["EnqueueJobs"]
    inputs = jobs.flat_map { |job| job["inputFileSets"].flatten }
    inputs.each { |path| assert_path_exists File.join(File.dirname(made), path) }
    scenarios = jobs.map { |job| job["scenario"]["id"] }
    assert_equal %w[mesh_report.rb compare_meshes.rb mesh_mass.py hollow_check.esa], scenarios
  end
end
