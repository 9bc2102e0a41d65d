# frozen_string_literal: true

# Checks that each job of the demo ended as expected. Usage: check_demo.rb DEMO_FOLDER
require "json"

MEANT_TO_FAIL = { "not_an_stl.stl" => "is no STL file", "cut_off.step" => "is one half of a STEP file" }.freeze

demo = ARGV.fetch(0)
jobs = JSON.parse(File.read(File.join(demo, "job_list.json")))["JobList"]
succeeded = 2 # JobStatus: 2 is Success, 3 is Failed
failed = 3

problems = jobs.filter_map do |job|
  input = job["inputFiles"].first.tr("\\", "/")
  expected = MEANT_TO_FAIL.key?(File.basename(input)) ? failed : succeeded
  output = job["outputDir"].tr("\\", "/")
  if job["status"] != expected
    "Job #{job["seqId"]} (#{File.basename(input)}) ended with status #{job["status"]}, not #{expected}; " \
      "what it printed: #{job["workDir"].tr("\\", "/")}/scenario.log"
  elsif expected == succeeded && Dir.empty?(output)
    "Job #{job["seqId"]} succeeded, but its output folder #{output} is empty"
  end
end

abort(problems.join("\n")) unless problems.empty?
abort("There is not one job in the list") if jobs.empty?
failing = jobs.map { |job| File.basename(job["inputFiles"].first.tr("\\", "/")) }.find { |name| MEANT_TO_FAIL.key?(name) }
puts "All #{jobs.size} jobs ended as they should."
if failing
  puts "#{failing} #{MEANT_TO_FAIL[failing]}: its job is meant to fail, and the table shows the scenario's own message for it."
end
puts "Pictures and reports: #{File.join(demo, "output")}"
