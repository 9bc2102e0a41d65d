# frozen_string_literal: true

# Shows each figure beside its limit and its target. Usage: bench_table.rb ENGINE_JSON FIGURES_TEXT JOBS
require "json"

engine_file, figures_file, jobs = ARGV
ENGINE = JSON.parse(File.read(engine_file))["benchmarks"].to_h do |row|
  [row["name"].gsub(%r{/real_time|/iterations:\d+}, ""), row["real_time"]]
end
FIGURES = File.readlines(figures_file).to_h { |line| name, seconds = line.split; [name, seconds.to_f * 1000] }

ROW = "%-44s %14s   %-42s %14s %7s   %s\n"

def row(what, ours, limit, theirs, aim)
  printf(ROW, what, format("%.3f ms", ours), limit, format("%.3f ms", theirs), format("%.2f", ours / theirs), aim)
end

printf(ROW, "ours", "", "beside", "", "ratio", "aim")
[1000, 10_000, 100_000].each do |rows|
  ours = ENGINE.fetch("RewriteJobList/#{rows}")
  row("job list rewrite by the engine, #{rows} rows", ours, "write + flush + rename, same bytes",
      ENGINE.fetch("WriteAndRenameSameBytes/flushed/#{rows}"), "at most 3")
  row("", ours, "write + rename, same bytes, not flushed", ENGINE.fetch("WriteAndRenameSameBytes/unflushed/#{rows}"), "")
end
[10_000, 100_000].each do |rows|
  row("change of one row by the host, #{rows} rows", ENGINE.fetch("JournalOneChange/#{rows}"), "the same with 1,000 rows",
      ENGINE.fetch("JournalOneChange/1000"), "at most 1.2")
end
row("one of #{jobs} no-op scenarios", FIGURES.fetch("controller"), "the same through task-spooler",
    FIGURES.fetch("task_spooler"), "below 1")
row("", FIGURES.fetch("controller"), "bare posix_spawn + pidfd", FIGURES.fetch("posix_spawn"), "")
row("the same without engine and job list, median", FIGURES.fetch("runner_median"), "bare posix_spawn + pidfd, median",
    FIGURES.fetch("process_median"), "at most 3")
[10_000, 100_000].each do |rows|
  row("the same with #{rows} rows in the list", FIGURES.fetch("controller_#{rows}_rows"), "with 10 rows", FIGURES.fetch("controller"),
      "at most 1.2")
end
row("the same two at a time, throughput", FIGURES.fetch("controller_2_at_a_time"), "one at a time",
    FIGURES.fetch("controller"), "at most 0.625")
row("FetchScenarios, 10,000 files, 500 folders", ENGINE.fetch("FetchScenarios"), "raw walk that reads each .adc file",
    ENGINE.fetch("WalkDirectoriesAndReadSettings"), "at most 3")
row("", ENGINE.fetch("FetchScenarios"), "raw walk of the folders", ENGINE.fetch("WalkDirectories"), "")
[1000, 10_000].each do |kinds|
  row("decision among 100,000 jobs, #{kinds} kinds of needs", ENGINE.fetch("SchedulerDecision/#{kinds}"), "the aim itself", 1.0,
      kinds == 1000 ? "at most 1" : "")
end
row("EnqueueJob of 10,000 input sets", ENGINE.fetch("EnqueueTenThousandSets"), "the aim itself", 150.0, "at most 1")
[10, 10_000].each do |count|
  row("status by the command line, #{count} jobs", FIGURES.fetch("status_#{count}"), "the same from task-spooler, #{[count, 500].min} jobs",
      FIGURES.fetch("status_spooler_#{count}"), "at most 1")
end
row("end of a process until all are told, median", FIGURES.fetch("notice_median"), "the aim itself", 2.0, "at most 1")
row("one request of 10,000 sets, -i to last line", FIGURES.fetch("request_of_10000"), "(no limit)", FIGURES.fetch("request_of_10000"), "")
printf(ROW, "an idle host's share of a processor", format("%.4f %%", FIGURES.fetch("idle_share") / 10), "the aim itself", "0.1 %", "", "below")
