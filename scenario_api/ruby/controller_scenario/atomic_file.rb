# frozen_string_literal: true

module ControllerScenario
  # Replaces a file so that a reader sees the old or the new content, never a part of it.
  module AtomicFile
    # On Windows a file that somebody holds open cannot be replaced; scanners and readers let go within milliseconds.
    RENAME_ATTEMPTS = 200
    PAUSE_SECONDS = 0.005

    # Writes `content` (its bytes, unchanged) to `path` by way of a temporary file in the same directory.
    # With `durable` the content has reached the disk when this returns.
    # Raises SystemCallError when it fails; `path` is then as it was and the temporary file gone.
    def self.write(path, content, durable: false)
      temporary = temporary_path(path)
      File.open(temporary, File::WRONLY | File::CREAT | File::TRUNC | File::BINARY) do |file|
        file.write(content)
        file.fsync if durable
      end
      replace(temporary, path)
    rescue SystemCallError
      discard(temporary)
      raise
    end

    # Renames `temporary` to `path`, again and again for a bounded time while access to `path` is refused.
    def self.replace(temporary, path)
      attempt = 1
      begin
        File.rename(temporary, path)
      rescue Errno::EACCES
        raise if attempt >= RENAME_ATTEMPTS

        attempt += 1
        sleep(PAUSE_SECONDS)
        retry
      end
    end

    def self.temporary_path(path)
      File.join(File.dirname(path), ".#{File.basename(path)}.#{Process.pid}.tmp")
    end
    private_class_method :temporary_path

    def self.discard(temporary)
      File.unlink(temporary)
    rescue SystemCallError
      nil # it was never made, or its directory is gone
    end
    private_class_method :discard
  end
end
