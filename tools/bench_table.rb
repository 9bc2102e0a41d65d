# frozen_string_literal: true

# Shows each figure beside its limit and its aim. Usage: bench_table.rb ENGINE_JSON THROUGHPUT_TEXT JOBS
require "json"

engine_file, throughput_file, jobs = ARGV
milliseconds = JSON.parse(File.read(engine_file))["benchmarks"].to_h { |row| [row["name"].sub(%r{/real_time|/iterations:\d+}, "").sub("/real_time", ""), row["real_time"]] }
per_job = File.readlines(throughput_file).to_h { |line| name, seconds = line.split; [name, seconds.to_f * 1000 / jobs.to_i] }

ROW = "%-44s %12s   %-44s %12s %8s   %s\n"

def row(what, ours, limit, theirs, aim)
  printf(ROW, what, format("%.3f ms", ours), limit, format("%.3f ms", theirs), format("%.2f", ours / theirs), aim)
end

printf(ROW, "ours", "", "beside", "", "ratio", "aim")
[1000, 10_000, 100_000].each do |rows|
  ours = milliseconds.fetch("RewriteJobList/#{rows}")
  row("job list rewrite, #{rows} rows", ours, "write + flush + rename of the same bytes", milliseconds.fetch("WriteAndRenameSameBytes/flushed/#{rows}"), "at most 3")
  row("", ours, "write + rename, not flushed", milliseconds.fetch("WriteAndRenameSameBytes/unflushed/#{rows}"), "")
end
row("one of #{jobs} no-op scenarios", per_job.fetch("controller"), "the same through task-spooler", per_job.fetch("task_spooler"), "below 1")
row("", per_job.fetch("controller"), "bare posix_spawn + pidfd", per_job.fetch("posix_spawn"), "")
row("FetchScenarios, 10,000 files, 500 folders", milliseconds.fetch("FetchScenarios"), "raw walk of the folders", milliseconds.fetch("WalkFolders"), "at most 3")
row("EnqueueJob of 10,000 input sets", milliseconds.fetch("EnqueueTenThousandSets"), "the aim itself", 150.0, "at most 1")
