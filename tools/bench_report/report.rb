# frozen_string_literal: true

# Shows each figure beside its limit and its goal, and writes bench.json, bench.md and bench.svg.
# Usage: report.rb ENGINE_JSON FIGURES_TEXT ABOUT_JSON OUTPUT_DIRECTORY
# Fails if a benchmark did not run. A missed goal is no failure.

require_relative "chart"
require_relative "table"

engine_file, figures_file, about_file, output = ARGV
about = JSON.parse(File.read(about_file))
begin
  figures = BenchReport::Figures.new(File.readlines(figures_file), JSON.parse(File.read(engine_file))["benchmarks"])
  results = BenchReport.results(figures)
rescue KeyError, JSON::ParserError => e
  abort("bench: a benchmark did not run: #{e.message}")
end

puts BenchReport.text_table(results)
File.write(File.join(output, "bench.json"), "#{JSON.pretty_generate(about.merge(rows: results.map(&:to_h)))}\n")
File.write(File.join(output, "bench.md"), "#{BenchReport.markdown(results, about)}\n")
BenchReport::Chart.write(results, File.join(output, "bench.svg"))
puts "", "Written to #{output}: #{Dir.children(output).sort.join(", ")}", "", *BenchReport.summary(results)
