# frozen_string_literal: true

# Runs the commands of the documents, as a reader would; document.rb says which. The blocks of a document run one after another in a
# directory of their own, with a new user's settings and a copy of the installation.
# Usage, in the project's directory: run_blocks.rb INSTALLATION [DOCUMENT...]

require "fileutils"
require "open3"
require "tmpdir"
require_relative "document"

# A directory for the commands of one document.
class Reader
  LIMIT = 300

  def initialize(installation, directory)
    @directory = directory
    @prefix = File.join(directory, "installation")
    FileUtils.cp_r(installation, @prefix)
    @home = File.join(directory, "home")
    FileUtils.mkdir_p(File.join(@home, "here"))
    %w[examples scenario_api].each { |name| FileUtils.ln_s("#{@prefix}/share/common_controller/#{name}", "#{@home}/here/#{name}") }
    FileUtils.mkdir_p(File.join(directory, "run"), mode: 0o700)
  end

  # Returns what the commands printed, and whether all succeeded.
  def run(commands)
    script = commands.gsub("/usr/share/common_controller", "#{@prefix}/share/common_controller").gsub("/opt/common_controller", @prefix)
    output = File.join(@directory, "output")
    # A host that the commands start keeps their output open: a file, not a pipe.
    system(environment, "timeout", "--kill-after=5", LIMIT.to_s, "bash", "-euo", "pipefail", "-xc", script,
           unsetenv_others: true, chdir: File.join(@home, "here"), in: File::NULL, %i[out err] => output)
    succeeded = $?.success?
    [File.read(output, encoding: "UTF-8").scrub, succeeded]
  ensure
    [%w[controller_web --stop], %w[cadjobs --client-only host stop]].each do |command|
      system(environment, *command, unsetenv_others: true, %i[in out err] => File::NULL)
    end
  end

  private

  def environment
    { "PATH" => "#{@prefix}/bin:/usr/bin:/bin", "HOME" => @home, "XDG_RUNTIME_DIR" => File.join(@directory, "run"),
      "LC_ALL" => "C.UTF-8", "CMAKE_GENERATOR" => "Ninja" }
  end
end

def run(document, installation)
  Dir.mktmpdir do |directory|
    output, succeeded = Reader.new(installation, directory).run(document.script)
    abort("#{output}\n#{document.path}: its commands do not work; the last one above failed") unless succeeded
  end
  puts "#{document.path}: #{document.run_count} blocks run"
end

installation = File.expand_path(ARGV.fetch(0))
paths = ARGV.drop(1)
paths = ["README.md", *Dir["docs/*.md"].sort] if paths.empty?
documents = paths.map { |path| Document.new(path) }
with_commands = documents.reject { |document| document.script.empty? }
abort("no document has commands to run") if with_commands.empty?
with_commands.each { |document| run(document, installation) }
