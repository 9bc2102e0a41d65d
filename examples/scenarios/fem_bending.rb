# frozen_string_literal: true

# A simple strength check with Gmsh and CalculiX: the lower end of a STEP or BREP part is held, a force pulls at its upper
# end along x. Writes fem.json, mesh.inp, and deformed.stl with deformed.png: the part as it gives way, exaggerated, in the
# colours of its stress (blue none, red the greatest). Lengths in mm, forces in N, stresses in MPa; linear, one material.
#
# Parameters, of which fem_bending.scenario.json offers the choices: "force", "modulus" of elasticity, "elementSize" relative
# to the part's diagonal, "grip": how much of the height is held and pulled, "size" of the picture in pixels, "timeLimit" for
# each tool in seconds.

require "controller_scenario"
require "fileutils"
require "json"
require_relative "../lib/cad/fem_case"
require_relative "../lib/cad/fem_mesh"
require_relative "../lib/cad/part_scenario"
require_relative "../lib/drawing/part_picture"
require_relative "../lib/drawing/stress_colours"
require_relative "../lib/mesh/mesh_summary"

class FemBending
  # How large the greatest shift is drawn, relative to the part's diagonal.
  DRAWN_SHIFT = 0.12

  # Where the meshing of curves, surfaces and the volume begins in the progress.
  MESHING = { "curve" => 0, "surface" => 10, "volume" => 25 }.freeze

  def initialize(job)
    @job = job
    @parameters = job.parameters
  end

  def run
    @job.fail!("One input file is needed, not #{@job.inputs.size}.") unless @job.inputs.size == 1

    part = PartFile.new(@job.inputs.first)
    @name = part.name
    mesh = mesh(part.stage(@job.work_dir, "part"))
    load_case = solve(mesh)
    picture(mesh, load_case)
    publish(mesh, load_case)
  rescue FemMesh::Unusable => e
    raise Tool::Failed, "#{@name} #{e.message}"
  rescue FemCase::Unusable => e
    raise Tool::Failed, "#{@name} could not be calculated: #{e.message}"
  end

  private

  def mesh(staged)
    run_gmsh(staged)
    mesh = FemMesh.new(path("mesh.inp"))
    bodies = mesh.body_count
    raise FemMesh::Unusable, "consists of #{bodies} bodies that are not joined; one can be calculated" if bodies > 1

    mesh
  end

  # Gmsh's own error says more than its exit code, which may be 0.
  def run_gmsh(staged)
    error = nil
    options = ["-3", "-order", "2", "-nt", "1", "-clscale", (10 * @parameters["elementSize"]).to_s,
               "-setnumber", "Mesh.SecondOrderLinear", "1", "-format", "inp", "-o", "mesh.inp"]
    Tool.new(@job, :gmsh, @parameters["timeLimit"]).run(staged, *options) do |line|
      error ||= line[/^Error *: (.*)/, 1]
      hear_gmsh(line)
    end
    raise Tool::Failed, "#{@name} could not be meshed: #{error}" if error
  rescue Tool::Failed => e
    raise e if e.message.start_with?(@name)

    raise Tool::Failed, "#{@name} could not be meshed: #{error || e.message}"
  end

  def hear_gmsh(line)
    @job.report_tool_version("Gmsh", Regexp.last_match(1)) if line =~ /\[Gmsh ([\d.]+)/
    return unless line =~ /\[ *(\d+)%\] Meshing (curve|surface|volume)/

    @job.progress(MESHING[Regexp.last_match(2)] + (Regexp.last_match(1).to_i / 10), "Meshing #{@name}")
  end

  def solve(mesh)
    load_case = FemCase.new(mesh, @parameters["force"], @parameters["modulus"], @parameters["grip"])
    load_case.write(path("case.inp"))
    @job.progress(45, "Calculating #{@name}: #{mesh.nodes.size} nodes")
    run_ccx
    @job.progress(75, "Reading the results of #{@name}")
    load_case.read(path("case.dat"))
    load_case
  end

  def run_ccx
    error = nil
    Tool.new(@job, :ccx, @parameters["timeLimit"]).run("case", environment: { "OMP_NUM_THREADS" => "1" }) do |line|
      error ||= line.strip if line.include?("*ERROR")
      @job.report_tool_version("CalculiX", Regexp.last_match(1)) if line =~ /CalculiX Version ([\d.]+)/
    end
    raise FemCase::Unusable, error if error
  rescue Tool::Failed => e
    raise FemCase::Unusable, error || e.message
  end

  def picture(mesh, load_case)
    @job.progress(80, "Drawing #{@name}")
    surface = mesh.surface
    summary = MeshSummary.new(@job.write_output("deformed.stl", deformed(mesh, load_case, surface)))
    colours = StressColours.new(load_case.greatest_stress, PartPicture::SHADES)
    palettes = surface.map { |element, _| colours.palette_of(load_case.stresses[element]) }
    picture = PartPicture.new(summary.topology, @parameters["size"], palettes: palettes)
    @job.write_output("deformed.png", picture.to_png { @job.stop_if_cancelled })
  end

  # The bytes of an STL file with one triangle for each face of the surface.
  def deformed(mesh, load_case, surface)
    factor = DRAWN_SHIFT * mesh.diagonal / load_case.greatest_shift
    triangles = surface.map do |_, ids|
      corners = ids.flat_map do |id|
        mesh.nodes[id].zip(load_case.shifts[id]).map { |place, shift| place + (factor * shift) }
      end
      [0, 0, 0, *corners, 0].pack("e12v")
    end
    ["Deformed part".ljust(80), triangles.size].pack("a80V") << triangles.join
  end

  def publish(mesh, load_case)
    FileUtils.cp(path("mesh.inp"), @job.output_path("mesh.inp"))
    @job.add_output(@job.output_path("mesh.inp"))
    content = { file: @name, nodes: mesh.nodes.size, elements: mesh.elements.size, meshedVolume: mesh.volume,
                force: @parameters["force"], modulus: @parameters["modulus"],
                greatestShift: load_case.greatest_shift, greatestStress: load_case.greatest_stress }
    @job.write_output("fem.json", "#{JSON.pretty_generate(content)}\n")
    @job.message(format("%s: %d elements; gives way by %.4g mm under %g N, stress up to %.4g MPa", @name,
                        mesh.elements.size, load_case.greatest_shift, @parameters["force"], load_case.greatest_stress))
  end

  def path(name)
    File.join(@job.work_dir, name)
  end
end

ControllerScenario.run { |job| PartScenario.run(job) { FemBending.new(job).run } }
