# frozen_string_literal: true

# A mesh that is held at its lower end and pulled along x at its upper one: the input file for CalculiX, and its results.
# Lengths in mm, forces in N, stresses in MPa.
class FemCase
  class Unusable < StandardError; end

  POISSON = 0.3

  # Held and pulling forces must balance: how far they may not, relative to the force.
  BALANCE = 1e-3

  # By node: how far it moves, as [x, y, z]. By element: its greatest von Mises stress.
  attr_reader :shifts, :stresses

  def initialize(mesh, force, modulus, grip)
    @mesh = mesh
    @force = force
    @modulus = modulus
    @held, @pulled = mesh.ends(grip)
  end

  def write(path)
    File.open(path, "w") do |deck|
      deck.puts "*NODE, NSET=ALL", @mesh.nodes.map { |id, place| "#{id}, #{place.join(", ")}" }
      deck.puts "*ELEMENT, TYPE=C3D10, ELSET=PART", @mesh.elements.map { |id, nodes| "#{id}, #{nodes.join(", ")}" }
      deck.puts "*NSET, NSET=HELD", @held.map { |id| "#{id}," }
      deck.puts "*MATERIAL, NAME=METAL", "*ELASTIC", "#{@modulus}, #{POISSON}", "*SOLID SECTION, ELSET=PART, MATERIAL=METAL"
      deck.puts "*STEP", "*STATIC", "*BOUNDARY", "HELD, 1, 3"
      deck.puts "*CLOAD", @pulled.map { |id| "#{id}, 1, #{@force / @pulled.size}" }
      deck.puts "*NODE PRINT, NSET=ALL", "U", "*EL PRINT, ELSET=PART", "S", "*NODE PRINT, NSET=HELD, TOTALS=ONLY", "RF"
      deck.puts "*END STEP"
    end
  end

  # Raises Unusable when the results are missing or contradict the load.
  def read(path)
    raise Unusable, "CalculiX has left no results" unless File.file?(path)

    @shifts, @stresses, @reaction, section = {}, Hash.new(0.0), nil, nil
    File.foreach(path) do |line|
      section = line[/\A *(displacements|stresses|total force)/, 1] || section
      values = line.split.map { |text| Float(text, exception: false) }
      take(section, values) unless values.empty? || values.include?(nil)
    end
    check
  end

  def greatest_shift
    shifts.values.map { |shift| Math.sqrt(shift.sum { |value| value * value }) }.max
  end

  def greatest_stress
    stresses.values.max
  end

  private

  def take(section, values)
    case [section, values.size]
    when ["displacements", 4] then @shifts[values[0].to_i] = values.drop(1)
    when ["stresses", 8] then @stresses[values[0].to_i] = [@stresses[values[0].to_i], von_mises(*values.drop(2))].max
    when ["total force", 3] then @reaction = values
    end
  end

  def von_mises(sx, sy, sz, sxy, sxz, syz)
    Math.sqrt((((sx - sy)**2) + ((sy - sz)**2) + ((sz - sx)**2)) / 2 + (3 * ((sxy**2) + (sxz**2) + (syz**2))))
  end

  # CalculiX ends with 0 for a part that is held nowhere.
  def check
    if shifts.size < @mesh.nodes.size || stresses.size < @mesh.elements.size || @reaction.nil?
      raise Unusable, "CalculiX has left results for #{stresses.size} of #{@mesh.elements.size} elements only"
    end
    if (@reaction[0] + @force).abs > BALANCE * @force.abs
      raise Unusable, format("CalculiX's result does not hold the load: %g N pull, %g N hold", @force, -@reaction[0])
    end
    return if greatest_shift < @mesh.diagonal

    raise Unusable, format("it would give way by %g mm, more than its size: the force is too great", greatest_shift)
  end
end
