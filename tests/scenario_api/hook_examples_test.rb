# frozen_string_literal: true

require_relative "test_helper"
require "socket"

# The hooks of the examples, as docs/hooks.md configures them, with stand-ins for the mail program and the web server.
class HookExamplesTest < Minitest::Test
  include JobFolders

  HOOKS = JSON.parse(File.read(File.join(PROJECT_FOLDER, "docs/hooks.md"), encoding: "UTF-8")[/^```json\n(.*?)^```/m, 1])["hooks"]
  FAILED_JOB = { "CONTROLLER_EVENT" => "jobFailed", "CONTROLLER_JOB_NUMBER" => "7", "CONTROLLER_JOB_ID" => "3f9a",
                 "CONTROLLER_JOB_STATUS" => "Failed", "CONTROLLER_JOB_OUTPUT" => "/out/a b\n$(touch x)",
                 "CONTROLLER_JOB_SCENARIO" => "mesh" }.freeze

  # The command runs in the directory of the settings file, which contains the example.
  def run_hook(command, environment)
    assert_equal "ruby", command.first
    output, status = Open3.capture2e(environment, RbConfig.ruby, *command.drop(1), chdir: EXAMPLES_FOLDER)
    [status.exitstatus, output]
  end

  def stand_in_for_sendmail(exit_code)
    write_file("sendmail", "#!/bin/sh\necho \"$@\" >'#{@root}/arguments'\ncat >'#{@root}/mail'\nexit #{exit_code}\n")
      .tap { |path| File.chmod(0o700, path) }
  end

  def test_the_mail_names_the_job
    exit_code, output = run_hook([*HOOKS["jobFailed"], stand_in_for_sendmail(0)], FAILED_JOB)
    assert_equal 0, exit_code, output
    assert_equal "-t\n", File.read(File.join(@root, "arguments"))
    header, body = File.read(File.join(@root, "mail")).split("\n\n", 2)
    assert_equal ["To: me@example.com", "Subject: jobFailed 7 Failed"], header.lines(chomp: true).first(2)
    assert_includes body, "output: /out/a b\n$(touch x)\n"
  end

  def test_a_mail_program_that_fails_or_is_missing_fails_the_hook
    assert_equal 3, run_hook([*HOOKS["jobFailed"], stand_in_for_sendmail(3)], FAILED_JOB).first
    assert_equal 1, run_hook([*HOOKS["jobFailed"], File.join(@root, "none")], FAILED_JOB).first
  end

  # Answers one request; returns its content.
  def answer_one(server, status)
    connection = server.accept
    length = connection.each_line.take_while { |line| line != "\r\n" }.join[/^Content-Length: (\d+)/i, 1].to_i
    content = connection.read(length)
    connection.write("HTTP/1.1 #{status}\r\nContent-Length: 0\r\nConnection: close\r\n\r\n")
    connection.close
    content
  end

  def run_webhook(environment, status)
    server = TCPServer.new("127.0.0.1", 0)
    command = HOOKS["queueEmpty"].map { |word| word.sub("127.0.0.1:8080", "127.0.0.1:#{server.addr[1]}") }
    answering = Thread.new { answer_one(server, status) }
    exit_code, output = run_hook(command, environment)
    [exit_code, Timeout.timeout(DEADLINE_SECONDS) { answering.value }, output]
  ensure
    server.close
  end

  def test_the_webhook_posts_the_event
    exit_code, content, output = run_webhook({ "CONTROLLER_EVENT" => "queueEmpty" }, "204 No Content")
    assert_equal [0, { "event" => "queueEmpty" }], [exit_code, JSON.parse(content)], output
    _, content, = run_webhook(FAILED_JOB, "200 OK")
    assert_equal({ "event" => "jobFailed", "job_number" => "7", "job_id" => "3f9a", "job_status" => "Failed",
                   "job_output" => "/out/a b\n$(touch x)", "job_scenario" => "mesh" }, JSON.parse(content))
  end

  def test_a_server_that_refuses_fails_the_webhook
    assert_equal 1, run_webhook(FAILED_JOB, "500 Internal Server Error").first
  end
end
