# frozen_string_literal: true

# A row of the tables in conformance/*.json: what a scenario gets and does, and what it leaves. Members that a row omits:
#
#   what it gets
#     request        members of the run request that differ from the usual ones
#     runInfo        the whole text of the run request (runInfoBase64: its bytes; runInfoNesting: the usual one with so
#                    many nested lists)
#     arguments      those of the command line, default the path of the run request
#     environment    variables
#     files          by path in the directory of the test; %E9 in a name is that byte; an object is written as JSON
#     directories    created beforehand
#     steps          what the scenario does, see conformance/scenario.rb
#     stop           "killprocess" or "sigterm": sent once there is progress
#   what it leaves
#     exitCode       default 0
#     stderr, stdout default empty
#     result         members that differ from a success without messages; null: there is none
#     shown          what steps have shown, in JSON
#     messageCount, firstMessage, lastMessage, resultBytesBelow
#     progress       the step in the file of the progress; null: there is no file
#     usedTools      without the language itself; usedFiles: some that are reported
#     bytes          contents of files, in base64
#     listings       names in directories
#
# A text that is expected is a text, {"match": REGEX}, or {"ruby": TEXT, "python": TEXT}. ${root}, ${work} and ${output} are
# directories. A row with "each" stands for one row per element, which is ${name}, or per pair ${name} and ${value}.
class ConformanceRow
  def self.all
    Dir.glob(File.join(__dir__, "conformance/*.json")).sort.flat_map do |path|
      JSON.parse(File.read(path, encoding: "UTF-8"), max_nesting: false).flat_map { |members| expand(members) }
    end
  end

  def self.expand(members)
    return [new(members)] unless members.key?("each")

    pairs = members["each"].is_a?(Hash) ? members["each"] : members["each"].to_h { |name| [name, nil] }
    pairs.map { |name, value| new(substitute(members.except("each"), "name" => name, "value" => value)) }
  end
  private_class_method :expand

  # Replaces ${name} in all texts of a value; a text that is nothing else becomes the value itself.
  def self.substitute(value, replacements)
    case value
    when Hash then value.to_h { |name, element| [name, substitute_member(name, element, replacements)] }
    when Array then value.map { |element| substitute(element, replacements) }
    when String then substitute_text(value, replacements)
    else value
    end
  end

  def self.substitute_member(name, element, replacements)
    is_pattern = name == "match"
    quoted = replacements.transform_values { |text| is_pattern && text.is_a?(String) ? Regexp.escape(text) : text }
    substitute(element, quoted)
  end
  private_class_method :substitute_member

  def self.substitute_text(text, replacements)
    whole = text[/\A\$\{(\w+)\}\z/, 1]
    return replacements[whole] if replacements.key?(whole)

    text.gsub(/\$\{(\w+)\}/) { |name| replacements.fetch($1, name).to_s }
  end
  private_class_method :substitute_text

  def initialize(members)
    @members = members
  end

  def name
    self["name"]
  end

  def [](member)
    @members[member]
  end

  def key?(member)
    @members.key?(member)
  end

  # The row for these directories.
  def within(directories)
    ConformanceRow.new(ConformanceRow.substitute(@members, directories))
  end
end
