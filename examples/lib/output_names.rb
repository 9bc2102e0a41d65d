# frozen_string_literal: true

# Prefixes for the names of the output files of several inputs.
module OutputNames
  # None for one input; else "<name>_" for each, where inputs of the same name get a number: "<name>_2_".
  def self.prefixes(inputs)
    return [""] if inputs.size == 1

    taken = Hash.new(0)
    inputs.map do |path|
      name = File.basename(path, ".*").scrub("_")
      number = taken[name.downcase] += 1
      number > 1 ? "#{name}_#{number}_" : "#{name}_"
    end
  end
end
