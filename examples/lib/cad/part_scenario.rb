# frozen_string_literal: true

require_relative "draw"

# What the scenarios for STEP, IGES and BREP files share.
module PartScenario
  WARNING = 1

  # Runs the block; what is wrong with a file or a tool ends the job with its message.
  def self.run(job)
    yield
  rescue PartFile::Unusable, Tool::Missing, Tool::Failed => e
    job.fail!(e.message)
  end

  # The part after its check, in a work directory of which the tool takes it: [Draw, settings for its script].
  def self.prepare(job, path, time_limit)
    draw = Draw.new(job, time_limit)
    part = PartFile.new(path)
    [draw, { input: draw.stage(part, "part"), faces: part.face_count }]
  end

  def self.warn(job, draw)
    draw.notes.each { |note| job.message(note, code: WARNING) }
  end
end
