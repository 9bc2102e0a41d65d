/** Texts that would do harm if they were markup. */
export const markup = '<img src=x onerror="document.title=1">';

/** Small scenarios, by file name. */
export const scenarios: Record<string, string> = {
  'prints_markup.rb': `require "controller_scenario"
ControllerScenario.run do |job|
  puts "<script>document.title = 1</script>"
  job.progress(50, ${JSON.stringify(markup)})
  job.write_output(${JSON.stringify(`${markup}.txt`)}, "text")
  job.message(${JSON.stringify(markup)})
end
`,
  // Ends when the file "go" is beside its input.
  'waits.rb': `require "controller_scenario"
ControllerScenario.run do |job|
  job.progress(10, "waiting")
  until File.exist?(File.join(File.dirname(job.inputs.first), "go"))
    job.stop_if_cancelled
    sleep 0.02
  end
end
`,
  // Prints the lines that are added to the file "lines" beside its input; ends as waits.rb does.
  'prints.rb': `require "controller_scenario"
$stdout.sync = true
ControllerScenario.run do |job|
  folder = File.dirname(job.inputs.first)
  printed = 0
  loop do
    isLast = File.exist?(File.join(folder, "go"))
    lines = File.exist?(File.join(folder, "lines")) ? File.readlines(File.join(folder, "lines")) : []
    lines.drop(printed).each { |line| print line }
    printed = lines.size
    break if isLast
    job.stop_if_cancelled
    sleep 0.02
  end
end
`,
  // The results are the files beside its input.
  'copies.rb': `require "controller_scenario"
ControllerScenario.run do |job|
  Dir.chdir(File.dirname(job.inputs.first)) do
    Dir.glob("**/*").select { |name| File.file?(name) }.each { |name| job.write_output(name, File.binread(name)) }
  end
end
`,
  'fails.rb': `require "controller_scenario"
ControllerScenario.run do |job|
  puts "<script>document.title = 1</script>"
  raise ${JSON.stringify(`no volume in ${markup}`)}
end
`,
  'says_parameters.rb': `require "controller_scenario"
ControllerScenario.run { |job| job.message("size is #{job.parameters["size"]}, style is #{job.parameters["style"]}") }
`,
  'says_parameters.scenario.json': JSON.stringify({
    version: 1,
    parameterSets: [
      {
        id: 'standard',
        displayName: 'Standard',
        description: 'For a report.',
        parameters: [
          { name: 'size', type: 'integer', defaultValue: '800', allowedValues: [] },
          { name: 'style', type: 'choice', defaultValue: 'shaded', allowedValues: ['shaded', 'lines'] },
        ],
      },
    ],
  }),
};
