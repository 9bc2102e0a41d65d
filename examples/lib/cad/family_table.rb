# frozen_string_literal: true

# A table of part variants: CSV with the name of the part in the first column and variables in the others.
class FamilyTable
  # The message names the file and the line, and says what is wrong.
  class Unusable < StandardError; end

  SIZE_LIMIT = 1024 * 1024
  ROW_LIMIT = 500

  # Names become names of files.
  NAME = /\A[A-Za-z0-9][A-Za-z0-9_.-]{0,99}\z/
  VARIABLE = /\A\$?[A-Za-z_]\w*\z/
  NUMBER = /\A[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?\z/

  # A part and its variables, as texts.
  Row = Struct.new(:name, :variables) do
    # Options for OpenSCAD. What is neither a number nor true or false is a text.
    def definitions
      variables.flat_map { |variable, value| ["-D", "#{variable}=#{literal(value)}"] }
    end

    private

    def literal(value)
      return value if value.match?(NUMBER) || %w[true false].include?(value)

      "\"#{value.gsub(/["\\]/) { |letter| "\\#{letter}" }}\""
    end
  end

  attr_reader :rows

  # Raises Unusable.
  def self.read(path)
    name = File.basename(path).scrub("?")
    raise Unusable, "#{name} is larger than #{SIZE_LIMIT} bytes" if File.size(path) > SIZE_LIMIT

    new(name, File.read(path, encoding: "BOM|UTF-8").scrub("?").lines(chomp: true))
  rescue SystemCallError => e
    raise Unusable, "#{name} cannot be read: #{e.class.new.message}"
  end

  def initialize(file, lines)
    @file = file
    numbered = lines.each_with_index.map { |line, index| [fields(line), index + 1] }.reject { |row, _| row.all?(&:empty?) }
    (header, number), *rows = numbered
    raise Unusable, "#{file} holds no rows" if rows.empty?
    raise Unusable, "#{file} holds #{rows.size} rows; at most #{ROW_LIMIT} are made" if rows.size > ROW_LIMIT

    @variables = header.drop(1)
    @variables.each { |variable| check(variable.match?(VARIABLE), number, "\"#{variable}\" is no name of a variable") }
    @rows = rows.map { |row, line| row(row, line) }
    twice = @rows.map { |row| row.name.downcase }.tally.find { |_, count| count > 1 }
    raise Unusable, "#{file} names the part #{twice.first} twice" if twice
  end

  private

  def fields(line)
    line.split(",", -1).map(&:strip)
  end

  def row(values, line)
    check(values.size == @variables.size + 1, line, "#{values.size} fields, not #{@variables.size + 1}")
    check(values.first.match?(NAME), line, "\"#{values.first}\" is no name for a part: letters, digits, - _ and .")
    Row.new(values.first, @variables.zip(values.drop(1)))
  end

  def check(condition, line, problem)
    raise Unusable, "#{@file}, line #{line}: #{problem}" unless condition
  end
end
