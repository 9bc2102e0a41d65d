# frozen_string_literal: true

# @NAME@: lists the sizes of its input files. Say here what yours does, and what its parameters mean.

require "controller_scenario"

ControllerScenario.run do |job|
  smallest = job.parameters.fetch("smallestSize")
  job.fail!("No input file was given; choose one file or more.") if job.inputs.empty?

  rows = job.inputs.each_with_index.map do |path, index|
    name = File.basename(path)
    job.progress(100 * index / job.inputs.size, "Reading #{name}") # also ends a job that was cancelled
    size = File.size(path)
    job.fail!("#{name} has #{size} bytes; #{smallest} or more are needed.") if size < smallest
    "#{name}: #{size} bytes\n"
  end

  job.write_output("report.txt", rows.join)
  job.message("Files: #{rows.size}")
end
