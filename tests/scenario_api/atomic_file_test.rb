# frozen_string_literal: true

require_relative "test_helper"

class AtomicFileTest < Minitest::Test
  include JobFolders

  def path
    File.join(@root, "file.json")
  end

  # Makes the first `refusals` renames fail, like Windows while another process has the target open.
  def refuse_renames(refusals, &block)
    attempts = 0
    rename = File.method(:rename)
    refusing = lambda do |from, to|
      attempts += 1
      raise Errno::EACCES, to if attempts <= refusals

      rename.call(from, to)
    end
    File.stub(:rename, refusing) { ControllerScenario::AtomicFile.stub(:sleep, nil, &block) }
    attempts
  end

  def write(content)
    ControllerScenario::AtomicFile.write(path, content)
  end

  def test_writes_the_bytes_unchanged
    write("a\nb\r\n\x00\xFF".b)
    assert_equal "a\nb\r\n\x00\xFF".b, File.binread(path)
  end

  def test_tries_again_while_the_target_is_held_open
    write("old")
    assert_equal(4, refuse_renames(3) { write("new") })
    assert_equal "new", File.read(path)
  end

  def test_gives_up_after_a_bounded_number_of_attempts_and_leaves_the_old_file_alone
    write("old")
    attempts = refuse_renames(1_000_000) { assert_raises(Errno::EACCES) { write("new") } }
    assert_equal 200, attempts
    assert_equal ["file.json"], Dir.children(@root) - %w[work output]
    assert_equal "old", File.read(path)
  end

  def test_a_missing_folder_is_an_error
    assert_raises(Errno::ENOENT) { ControllerScenario::AtomicFile.write(File.join(@root, "no/file"), "") }
  end

  # Reads the file repeatedly while the writer replaces it.
  def test_a_reader_never_sees_a_part
    contents = %w[a b].map { |letter| letter * 100_000 }
    write(contents.first)
    writer = Thread.new { 100.times { |turn| write(contents[turn % 2]) } }
    seen = []
    seen |= [File.read(path)] while writer.alive?
    assert_empty seen - contents
  end
end
