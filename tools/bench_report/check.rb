# frozen_string_literal: true

# Checks that a run of the benchmarks left its results: bench.json and bench.md with every row, each measured or with
# the reason why not. Usage: check.rb OUTPUT_DIRECTORY

require "json"
require_relative "goals"

output = ARGV.fetch(0)
begin
  found = JSON.parse(File.read(File.join(output, "bench.json")))
  markdown = File.read(File.join(output, "bench.md"))
rescue SystemCallError, JSON::ParserError => e
  abort("bench: no results: #{e.message}")
end

problems = %w[machine date commit].reject { |name| found[name].is_a?(String) }.map { |name| "bench.json has no #{name}" }
rows = found.fetch("rows", []).to_h { |row| [row["name"], row] }
BenchReport::ROWS.each do |row|
  result = rows[row.name]
  if result.nil?
    problems << "bench.json has no row #{row.name}"
  elsif !result["value"].is_a?(Numeric) && !result["not_measured"].is_a?(String)
    problems << "the row #{row.name} has neither a value nor a reason"
  end
  problems << "bench.md has no row: #{row.what}" unless markdown.include?("| #{row.what} |")
end
abort(problems.map { |problem| "bench: #{problem}" }.join("\n")) unless problems.empty?
puts "bench: #{rows.size} rows, all there"
