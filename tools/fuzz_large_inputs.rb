# frozen_string_literal: true

# Writes inputs of a megabyte, one directory per fuzz target, that expose worse than linear time. Usage: ruby
# tools/fuzz_large_inputs.rb FOLDER

require 'fileutils'

SIZE = 1 << 20

def fill(piece)
  piece * (SIZE / piece.bytesize)
end

def json_texts
  {
    'lists' => fill('['), 'closed_lists' => "#{'[' * 60}#{fill('{},')}1#{']' * 60}", 'objects' => fill('{"a":'),
    'text' => "{\"a\":\"#{fill('x')}\"}", 'escapes' => "{\"a\":\"#{fill('\\n')}\"}",
    'surrogates' => "{\"a\":\"#{fill('\\ud800')}\"}", 'emoji' => "{\"a\":\"#{fill("\u{1f600}")}\"}",
    'digits' => "{\"a\":#{fill('7')}}", 'fraction' => "{\"version\":1.#{fill('7')}}",
    'blanks' => "{#{fill(" \n")}}", 'members' => "{#{fill('"zz":[],')}\"a\":1}",
    'long_names' => "{#{(1..20).map { |i| "\"#{i}#{'n' * (SIZE / 20)}\":1" }.join(',')}}",
    'quotes' => fill('"'), 'backslashes' => "{\"#{fill('\\')}", 'code_points' => "{\"a\":{\"codePoints\":[#{fill('97,')}1]}}"
  }
end

# Lists of each target's input, as long as the limit allows.
LISTS = {
  'job_list' => ['{"JobList":[', '{"inputFiles":["a"]},', '{}]}'],
  'journal' => ["{\"version\":1,\"snapshot\":\"one\"}\n{\"changed\":[", '{"id":"a"},', "{}],\"deleted\":[]}\n"],
  'jobs_file' => ['{"EnqueueJobs":[{"inputFileSets":[', '["../a"],', '[]]}]}'],
  'progress' => ['{"progressInfoList":[', '{"message":"a"},', '{}]}'],
  'result' => ['{"messages":[', '{"text":"a"},', '{}]}'],
  'run_request' => ['{"inputFiles":[', '"a",', '"b"]}'],
  'response' => ['{"a":[', '{"id":"a"},', '{}]}'],
  'settings' => ['{"functionModules":[', '"a",', '"b"]}'],
  'strings' => ['{"en-US":{', '"b":{},', '"a":"x"}}'],
  'manifest' => ['{"displayName":"a","executable":"x","inputs":[', '{"cadName":"a"},', '{}]}']
}.freeze

def json_inputs
  LISTS.to_h { |target, (head, element, tail)| [target, json_texts.merge('list' => head + fill(element) + tail)] }
end

def stored_entry(name, offset)
  facts = [0, 0, 0, 0, 0, 0, 0, 0].pack('vvvvvVVV')
  local = "PK\x03\x04#{facts}#{[name.bytesize, 0].pack('vv')}#{name}".b
  central = "PK\x01\x02\x14\0#{facts}#{[name.bytesize, 0, 0, 0, 0, 0, offset].pack('vvvvvVV')}#{name}".b
  [local, central]
end

def archive(names)
  files = String.new(encoding: 'BINARY')
  directory = String.new(encoding: 'BINARY')
  names.each do |name|
    local, central = stored_entry(name, files.bytesize)
    files << local
    directory << central
  end
  files + directory + "PK\x05\x06".b + [0, 0, names.size, names.size, directory.bytesize, files.bytesize, 0].pack('vvvvVVv')
end

def packages
  {
    'files' => archive((1..4000).map { |i| "f#{i}" }),
    'folders' => archive((1..1000).map { |i| "#{'d/' * 30}#{i}" }),
    'ends' => "PK\x05\x06".b * (SIZE / 4), 'ends_of_nothing' => ("PK\x05\x06".b + ("\0" * 18)) * (SIZE / 22)
  }
end

def profiles
  size = 1 << 20
  { 'lines' => "\n" * size, 'sections' => '[a]' * (size / 3), 'section_lines' => "[a]\n" * (size / 4),
    'keys' => "[Scenario]\n#{"a=b\n" * (size / 4 - 4)}", 'line' => "[Scenario]\n#{'=' * (size - 20)}",
    'blanks' => "[Scenario]\nCADName=#{' ' * (size - 40)}x" }
end

def frame(kind, name, payload)
  "CCev#{[1, kind, name.bytesize, payload.bytesize].pack('vvVV')}#{name}#{payload}".b
end

def streams
  { 'greetings' => fill(frame(1, '', '')), 'events' => fill(frame(2, 'a', 'b')), 'payload' => frame(2, 'a', fill("\u{1f600}")) }
end

def command_lines
  { 'arguments' => fill("a\n"), 'options' => fill("-f\n"), 'moved' => fill("--x\n"), 'ids' => "-c#{fill('1,')}" }
end

# Shorter where the number of arguments matters: the library for command lines takes quadratic time, and no system allows as many.
def subcommands
  { 'options' => "list\n#{fill("-f\n")[0, 40_000]}", 'runs' => "run\na\n#{fill("b\n")[0, 40_000]}", 'ids' => "wait\n#{fill('1,')}",
    'words' => fill("a\n")[0, 40_000], 'blanks' => "wait\n#{fill(' ')}" }
end

REQUEST_HEADERS = "Host: 127.0.0.1:8080\r\nCookie: $SESSION\r\nOrigin: http://127.0.0.1:8080\r\n"

def connections
  get = "GET /api HTTP/1.1\r\n#{REQUEST_HEADERS}"
  post = "POST /api HTTP/1.1\r\n#{REQUEST_HEADERS}Content-Type: application/json\r\n"
  { 'headers' => "\0#{get}#{fill("a: b\r\n")}", 'target' => "\0GET /#{fill('a/')}", 'pipeline' => "\0#{fill("#{get}\r\n")}",
    'content' => "\0#{post}Content-Length: #{SIZE}\r\n\r\n#{fill('x')}",
    'chunks' => "\0#{post}Transfer-Encoding: chunked\r\n\r\n#{fill("1\r\nx\r\n")}",
    'chunk_extension' => "\0#{post}Transfer-Encoding: chunked\r\n\r\n1#{fill(';a=b')}" }
end

def requests
  { 'path' => "GET\n/#{fill('a/')}", 'escapes' => fill('/%41'), 'query' => "GET\n/?#{fill('a=b&')}",
    'cookies' => "GET\n/\n\n#{fill('a=b; ')}", 'tags' => "GET\n/\n\n\n\n\n#{fill('"a", ')}",
    'encodings' => "GET\n/\n\n\n\n\n\n#{fill('a;q=0, ')}", 'hosts' => fill("h\n") }
end

folder = ARGV.fetch(0)
inputs = json_inputs.merge('esa' => packages, 'adc' => profiles, 'frames' => streams, 'command_line' => command_lines,
                           'subcommands' => subcommands, 'http' => connections, 'web' => requests)
inputs.each do |target, files|
  FileUtils.mkdir_p("#{folder}/#{target}")
  files.each { |name, bytes| File.binwrite("#{folder}/#{target}/#{name}", bytes) }
end
