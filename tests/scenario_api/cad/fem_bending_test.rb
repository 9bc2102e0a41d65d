# frozen_string_literal: true

require_relative "cad_fixtures"
require_relative "../mesh_fixtures"

# A bar of 10 x 10 x 100, held at its foot and pulled across at its top, against the theory of beams.
class FemBendingTest < Minitest::Test
  include MeshFixtures
  include CadFixtures

  FORCE = 100.0
  LENGTH = 100.0
  MODULUS = 210_000.0
  INERTIA = (10.0**4) / 12
  SHEAR = MODULUS / (2 * (1 + 0.3)) * 100 * 5 / 6

  BAR = "coarse force=100 grip=0.001 size=400"

  def setup
    super
    %i[draw gmsh ccx].each { |key| CadFixtures.need(self, key) }
  end

  def calculate(name, run_argument = BAR)
    run_example("fem_bending", part(name), run_argument: run_argument)
  end

  def test_a_bar_bends_as_the_theory_says
    assert_equal 0, calculate("bar.step"), "#{@stdout}#{@stderr}"
    report = read_json("output/fem.json")
    assert_in_epsilon 10 * 10 * LENGTH, report["meshedVolume"], 1e-6
    shift = (FORCE * (LENGTH**3) / (3 * MODULUS * INERTIA)) + (FORCE * LENGTH / SHEAR)
    assert_in_epsilon shift, report["greatestShift"], 0.02
    assert_in_epsilon FORCE * LENGTH * 5 / INERTIA, report["greatestStress"], 0.2 # inside of the outermost elements
    assert_equal %w[deformed.png deformed.stl fem.json mesh.inp], Dir.children(@output_folder).sort
  end

  def test_twice_the_force_or_half_the_modulus_bends_twice_as_much
    shifts = ["", "force=200", "modulus=105000"].map do |change|
      changed = change.empty? ? BAR : "#{BAR.sub(/#{change[/\w+=/]}\S+ ?/, "")} #{change}"
      assert_equal 0, calculate("bar.step", changed), @stdout
      read_json("output/fem.json")["greatestShift"]
    end
    assert_in_epsilon 2 * shifts[0], shifts[1], 1e-3
    assert_in_epsilon 2 * shifts[0], shifts[2], 1e-3
  end

  # The deformed part is drawn bent by an eighth of its diagonal: a tenth of a millimetre would not be seen.
  def test_the_deformation_can_be_seen
    assert_equal 0, calculate("bar.step"), @stdout
    assert_in_delta 10 + (0.12 * 100.995), MeshSummary.new(output("deformed.stl")).measures.size[0], 0.6
  end

  def test_what_cannot_be_calculated_is_named
    calculate("shaft_unit.step", "coarse size=400")
    assert_match(/\Ashaft_unit.step consists of \d bodies that are not joined; one can be calculated\z/, result_texts.first)
    calculate("cover_unclosed.step", "coarse size=400")
    refute result["succeeded"]
    assert_match(/\Acover_unclosed.step /, result_texts.first)
    calculate("bar.step", "coarse force=100000000 grip=0.001")
    assert_match(/\Abar.step could not be calculated: it would give way by \S+ mm, more than its size/, result_texts.first)
  end

  def test_a_solver_that_leaves_nothing_has_not_succeeded
    with_tool("CAD_CCX", "puts 'Job finished'") { calculate("bar.step") }
    assert_refused "bar.step could not be calculated: CalculiX has left no results"
  end

  def test_a_mesher_that_crashes_is_told
    with_tool("CAD_GMSH", "Process.kill(:KILL, Process.pid)") { calculate("bar.step") }
    assert_refused "bar.step could not be meshed: Gmsh crashed (signal 9)"
  end
end
