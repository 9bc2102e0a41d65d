# frozen_string_literal: true

# Every row of the benchmark's table with its goal. This file is the only place of the goals; docs/performance.md
# says what holds back those that are missed.
module BenchReport
  # `limit` is compared with the ratio of the two figures, or with the value itself if there is no figure beside it.
  Goal = Struct.new(:kind, :limit) do
    def reached?(number)
      case kind
      when :at_most then number <= limit
      when :below then number < limit
      else number >= limit
      end
    end

    # 1 is the goal exactly; more is worse.
    def share(number)
      kind == :at_least ? limit / number : number / limit
    end

    def to_s
      "#{kind.to_s.tr("_", " ")} #{limit}"
    end
  end

  # `ours` and `theirs` are names of figures.
  Row = Struct.new(:name, :what, :ours, :unit, :beside, :theirs, :goal, keyword_init: true)

  def self.at_most(limit) = Goal.new(:at_most, limit)
  def self.below(limit) = Goal.new(:below, limit)
  def self.at_least(limit) = Goal.new(:at_least, limit)

  # A figure beside another one.
  def self.pair(name, what, ours, beside, theirs, goal = nil, unit: "ms")
    Row.new(name: name, what: what, ours: ours, unit: unit, beside: beside, theirs: theirs, goal: goal)
  end

  # A figure with a limit of its own, or without any.
  def self.single(name, what, ours, goal = nil, unit: "ms")
    Row.new(name: name, what: what, ours: ours, unit: unit, goal: goal)
  end

  # 10,000 for 10000.
  def self.grouped(number) = number.to_s.gsub(/(\d)(?=(\d{3})+\z)/, '\1,')

  def self.job_rows(place)
    text = place == "tmpfs" ? "on tmpfs" : "on a disk"
    job = "#{place}_controller"
    [
      pair("job_#{place}", "no-op job, #{text}", job, "posix_spawn + wait of /bin/true",
           "#{place}_posix_spawn", place == "tmpfs" ? at_most(3) : nil),
      pair("job_#{place}_task_spooler", "no-op job, #{text}", job, "the same by task-spooler",
           "#{place}_task_spooler", below(1)),
      pair("two_at_a_time_#{place}", "no-op jobs two at a time, #{text}", "#{place}_controller_2_at_a_time:rate",
           "one at a time", "#{place}_controller:rate", at_least(1.6), unit: "jobs/s"),
      *[1, 2, 4].map do |count|
        pair("parallel_#{place}_#{count}", "no-op jobs #{count} at a time, #{text}",
             count == 1 ? "#{job}:rate" : "#{job}_#{count}_at_a_time:rate", "commands by GNU parallel", "#{place}_parallel_#{count}:rate",
             unit: "jobs/s")
      end,
      *[10_000, 100_000].map do |rows|
        pair("job_#{place}_#{rows}_rows", "no-op job, #{text}, #{grouped(rows)} rows in the list", "#{place}_controller_#{rows}_rows",
             "with 10 rows", job, at_most(1.2))
      end,
      pair("runner_#{place}", "no-op scenario without engine and job list, #{text}, median", "#{place}_runner_median",
           "posix_spawn + wait of /bin/true, median", "#{place}_process_median", place == "tmpfs" ? at_most(3) : nil)
    ]
  end

  LIST_ROWS = [1000, 10_000, 100_000].flat_map do |rows|
    [
      pair("rewrite_#{rows}", "rewrite of the list by the base engine, #{grouped(rows)} rows", "RewriteJobList/#{rows}",
           "write + flush + rename, same bytes", "WriteAndRenameSameBytes/flushed/#{rows}",
           rows > 1000 ? at_most(3) : nil),
      pair("rewrite_#{rows}_unflushed", "rewrite of the list by the base engine, #{grouped(rows)} rows", "RewriteJobList/#{rows}",
           "write + rename, same bytes, not flushed", "WriteAndRenameSameBytes/unflushed/#{rows}")
    ]
  end.freeze

  JOURNAL_ROWS = [10_000, 100_000].map do |rows|
    pair("journal_#{rows}", "change of one row by the host, #{grouped(rows)} rows", "JournalOneChange/#{rows}",
         "with 1,000 rows", "JournalOneChange/1000", at_most(1.2))
  end.freeze

  CATALOGUE_ROWS = [
    pair("catalogue_first", "catalogue, 10,000 files, 500 directories, first fetch", "FetchScenariosFirst",
         "walk that reads each .adc file", "WalkDirectoriesAndReadSettings", at_most(3)),
    pair("catalogue_second", "catalogue, second fetch, nothing changed", "FetchScenariosAgain",
         "walk of the directories", "WalkDirectories", at_most(1.5))
  ].freeze

  SCHEDULER_ROWS = [1000, 10_000].map do |kinds|
    single("decision_#{kinds}", "decision among 100,000 jobs, #{grouped(kinds)} kinds of needs", "SchedulerDecision/#{kinds}",
           kinds == 1000 ? at_most(1) : nil)
  end.freeze

  HASH_ROWS = [
    pair("hash", "SHA-256 of a file of 256 MiB in the cache", "HashFile", "of the same bytes in memory", "HashMemory", at_most(1.5))
  ].freeze

  REQUEST_ROWS = [
    single("enqueue", "EnqueueJob of 10,000 input sets", "EnqueueTenThousandSets", below(200)),
    single("request", "a request of 10,000 sets, -i to the last line", "request_of_10000")
  ].freeze

  STATUS_ROWS = [
    single("status", "-s of one job, 10,000 jobs in the list", "status_10000", below(10)),
    single("list", "cadjobs list of one job, 10,000 jobs in the list", "list_10000", below(10)),
    single("list_json", "cadjobs list --json of 100,000 jobs", "list_json_100000", below(500)),
    *[10, 10_000].map do |jobs|
      pair("status_#{jobs}_task_spooler", "-s of one job, #{grouped(jobs)} jobs in the list", "status_#{jobs}",
           "the same by task-spooler, #{[jobs, 500].min} jobs", "status_spooler_#{jobs}", at_most(1))
    end
  ].freeze

  WEB_ROWS = [
    *[1, 8].map do |count|
      single("web_requests_#{count}", "GET of the web page's server, #{count} #{count == 1 ? "connection" : "connections"}, 100,000 jobs",
             "web_requests_#{count}:rate", unit: "requests/s")
    end,
    single("web_event", "change in the host until a browser has its event, median", "web_event"),
    single("web_memory", "memory of the web page's server, 100,000 jobs", "web_memory", at_most(200), unit: "MB")
  ].freeze

  HOST_ROWS = [
    single("notice", "end of a process until all are told, median", "notice_median", at_most(2)),
    single("idle", "processor time of an idle host", "idle_share", below(0.1), unit: "%")
  ].freeze

  ROWS = [*job_rows("tmpfs"), *job_rows("disk"), *LIST_ROWS, *JOURNAL_ROWS, *CATALOGUE_ROWS,
          *SCHEDULER_ROWS, *HASH_ROWS, *REQUEST_ROWS, *STATUS_ROWS, *WEB_ROWS, *HOST_ROWS].freeze
end
