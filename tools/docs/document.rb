# frozen_string_literal: true

# A document: its fenced blocks, with what the comment in front of each says about it:
#   <!-- run -->                  the commands are run by run_blocks.rb; with "exit code N" the last one ends with N
#   <!-- run by FILE -->          FILE runs them
#   <!-- not run: WHY -->
#   <!-- file NAME -->            the block is written into this file, for later commands
# Commands that readers do not see, between the others: <!-- prepare, then lines of commands, then -->.
class Document
  # A fenced block, or a comment with commands.
  Block = Struct.new(:line, :language, :mark, :text) do
    def commands?
      COMMANDS.include?(language)
    end

    def where
      "line #{line}: #{text.lines.first.to_s.strip}"
    end
  end

  COMMANDS = %w[sh console bat].freeze
  LANGUAGES = %w[c cmake cpp ini json nginx python ruby text].freeze + COMMANDS
  MARK = /\A<!-- (run(?:, exit code \d+| by \S+)?|not run: .+|file \S+) -->\z/
  # A block by indentation, which says nothing about itself. Lists have a sign in front of it.
  INDENTED = /\n\n(?: {4,}|\t)(?![-*0-9|])\S.*/

  attr_reader :path, :blocks

  def initialize(path)
    @path = path
    @text = File.read(path, encoding: "UTF-8")
    @blocks = []
    @prose = +""
    read(@text.lines.map(&:chomp))
  end

  # Texts about blocks of which nobody knows whether they hold.
  def problems
    indented = @prose.scan(INDENTED).map { |text| "fence this block, with a language: #{text.strip}" }
    (indented + @blocks.filter_map { |block| problem_of(block) }).map { |text| "#{@path}: #{text}" }
  end

  # The shell script of the commands that are to be run, in their order; empty if there are none.
  def script
    parts = @blocks.map { |block| part_of(block) }
    run_count.zero? ? "" : parts.join
  end

  def run_count
    @blocks.count { |block| block.mark&.match?(/\A(run(,|\z)|file )/) }
  end

  private

  def read(lines)
    index = 0
    while index < lines.size
      match = lines[index].match(/\A(?:```(\w*)|(<!-- prepare))\z/)
      index = match ? take(lines, index, match) : keep(lines[index], index)
    end
  end

  def keep(line, index)
    @prose << line << "\n"
    index + 1
  end

  # Returns the index behind the block.
  def take(lines, index, match)
    last = (index + 1...lines.size).find { |i| lines[i] == (match[2] ? "-->" : "```") } || lines.size
    text = lines[index + 1...last].map { |line| "#{line}\n" }.join
    mark = match[2] ? "prepare" : index.positive? && lines[index - 1][MARK, 1]
    @blocks << Block.new(index + 1, match[1].to_s, mark || nil, text)
    @prose << "\n.\n"
    last + 1
  end

  def problem_of(block)
    return if block.mark == "prepare"
    return "#{block.where}: the language of the block is none of #{LANGUAGES.join(", ")}" unless LANGUAGES.include?(block.language)
    return "#{block.where}: the block says neither \"run\" nor \"not run\"" if block.commands? && block.mark.nil?

    file = block.mark.to_s[/\Arun by (\S+)/, 1]
    return if file.nil?
    return "#{block.where}: there is no file #{file}" unless File.exist?(file)

    missing = block.text.scan(%r{^\./run \w+}) - File.read(file).scan(%r{(?<![\w/])\./run \w+})
    "#{block.where}: #{file} does not run #{missing.first}" if file == ".ci/run" && missing.any?
  end

  def part_of(block)
    case block.mark
    when "prepare" then block.text
    when /\Afile (\S+)/ then "cat > #{Regexp.last_match(1)} <<'END_OF_FILE'\n#{block.text}END_OF_FILE\n"
    when /\Arun, exit code (\d+)/ then ending(commands_of(block), Regexp.last_match(1))
    when "run" then commands_of(block).join
    end
  end

  # Of a console the lines behind the prompt, with those that continue them.
  def commands_of(block)
    return block.text.lines if block.language != "console"

    block.text.scan(/^\$ ((?:.*\\\n)*.*\n)/).flatten
  end

  def ending(commands, exit_code)
    *others, last = commands
    "#{others.join}status=0\n#{last.chomp} || status=$?\n[ \"$status\" -eq #{exit_code} ]\n"
  end
end
