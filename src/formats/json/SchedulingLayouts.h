#pragma once

#include <cstdint>
#include <string_view>
#include <tuple>

#include "formats/Scheduling.h"
#include "formats/json/RecordLayouts.h"
#include "platform/system/Clock.h"
#include "text/Time.h"
#include "text/Wtf8.h"

/// The JSON layouts of what users decide about the start of jobs: in requests and jobs files with rules, in the rows of
/// the job list without, so that no value there damages the list.
namespace json {

struct PriorityRule {
    static constexpr auto expected = L"a whole number from -1000 to 1000";
    static bool Accepts(std::int32_t priority) { return priority >= -1000 && priority <= 1000; }
};

struct RetriesRule {
    static constexpr auto expected = L"a whole number from 0 to 100";
    static bool Accepts(std::int32_t retries) { return retries >= 0 && retries <= 100; }
};

struct DurationRule {
    static constexpr auto expected = L"a duration such as \"90s\", \"15m\", \"2h\" or \"1d\"";
    static bool Accepts(std::int64_t seconds) { return seconds >= 0; }
    [[nodiscard]] static bool ReadText(std::int64_t& seconds, std::string_view word) {
        seconds = text::ReadDuration(text::FromTrustedWtf8(word)).value_or(-1);
        return seconds >= 0;
    }
};

/// A time, or a duration from now on.
struct NotBeforeRule {
    static constexpr auto expected =
        L"a UTC time such as \"2026-03-05T07:08:09Z\", or a time from now such as \"90s\", \"15m\", \"2h\" or \"1d\"";
    static bool Accepts(std::int64_t time) { return time >= 0; }
    [[nodiscard]] static bool ReadText(std::int64_t& time, std::string_view word) {
        const std::wstring text = text::FromTrustedWtf8(word);
        const auto duration = text::ReadDuration(text);
        time = duration ? platform::Now() + *duration : text::ReadUtcTime(text).value_or(-1);
        return time >= 0;
    }
};

struct NeedRule {
    static constexpr auto expected = L"a whole number of at least 1";
    static bool Accepts(std::int64_t amount) { return amount >= 1; }
};

struct MemoryLimitRule {
    static constexpr auto expected = L"a whole number of MiB from 0 (no limit) to 1073741824";
    static bool Accepts(std::int64_t size) { return size >= 0 && size <= 1073741824; }
};

struct CpuLimitRule {
    static constexpr auto expected = L"a percentage from 0 (no limit) to 100000, where 100 is one core";
    static bool Accepts(std::int32_t percent) { return percent >= 0 && percent <= 100000; }
};

/// In requests, jobs files and settings.
template <>
struct Layout<RunRules> {
    static constexpr auto members =
        std::make_tuple(OptionalMember{"retries", &RunRules::retries, rule<RetriesRule>},
                        OptionalMember{"retryDelay", &RunRules::retryDelay, rule<DurationRule>},
                        OptionalMember{"retryBackoff", &RunRules::retryBackoff},
                        OptionalMember{"retryOnlyAfterCrash", &RunRules::retryOnlyAfterCrash},
                        OptionalMember{"timeLimit", &RunRules::timeLimit, rule<DurationRule>},
                        OptionalMember{"silenceLimit", &RunRules::silenceLimit, rule<DurationRule>},
                        OptionalMember{"memoryLimitMiB", &RunRules::memoryLimitMiB, rule<MemoryLimitRule>},
                        OptionalMember{"cpuLimitPercent", &RunRules::cpuLimitPercent, rule<CpuLimitRule>});
};

template <>
struct Layout<ScheduledRequest> {
    static constexpr auto members = std::tuple_cat(
        Layout<EnqueueJobsInfo>::members,
        std::make_tuple(OptionalMember{"priority", &Scheduling::priority, rule<PriorityRule>},
                        OptionalMember{"hold", &Scheduling::hold}, OptionalMember{"after", &Scheduling::after},
                        OptionalMember{"afterEnd", &Scheduling::afterEnd},
                        OptionalMember{"skipIfAfterFails", &Scheduling::skipIfAfterFails},
                        OptionalMember{"notBefore", &Scheduling::notBefore, rule<NotBeforeRule>},
                        OptionalMember{"needs", &Scheduling::needs, rule<NeedRule>},
                        OptionalMember{"reuse", &Scheduling::reuse}),
        Layout<RunRules>::members);
};

template <>
struct Layout<JobsEdit> {
    static constexpr auto members = std::make_tuple(
        Member{"jobs", &JobsEdit::jobs, Presence::Required},
        OptionalMember{"priority", &JobsEdit::priority, rule<PriorityRule>}, OptionalMember{"hold", &JobsEdit::hold},
        OptionalMember{"notBefore", &JobsEdit::notBefore, rule<NotBeforeRule>},
        OptionalMember{"needs", &JobsEdit::needs, rule<NeedRule>});
};

template <>
struct Layout<JobsQuery> {
    static constexpr auto members =
        std::make_tuple(OptionalMember{"jobs", &JobsQuery::jobs}, OptionalMember{"after", &JobsQuery::after},
                        OptionalMember{"limit", &JobsQuery::limit});
};

template <>
struct Layout<QueueState> {
    static constexpr auto members = std::make_tuple(Member{"paused", &QueueState::isPaused, Presence::Required});
};

template <>
struct Layout<QueueRecord> {
    static constexpr auto members = std::make_tuple(
        OptionalMember{"priority", &Scheduling::priority}, OptionalMember{"hold", &Scheduling::hold},
        OptionalMember{"after", &Scheduling::after}, OptionalMember{"afterEnd", &Scheduling::afterEnd},
        OptionalMember{"skipIfAfterFails", &Scheduling::skipIfAfterFails},
        OptionalMember{"notBefore", &Scheduling::notBefore}, OptionalMember{"needs", &Scheduling::needs},
        OptionalMember{"retries", &RunRules::retries}, OptionalMember{"retryDelay", &RunRules::retryDelay},
        OptionalMember{"retryBackoff", &RunRules::retryBackoff},
        OptionalMember{"retryOnlyAfterCrash", &RunRules::retryOnlyAfterCrash},
        OptionalMember{"timeLimit", &RunRules::timeLimit}, OptionalMember{"silenceLimit", &RunRules::silenceLimit},
        OptionalMember{"memoryLimitMiB", &RunRules::memoryLimitMiB},
        OptionalMember{"cpuLimitPercent", &RunRules::cpuLimitPercent}, OptionalMember{"reuse", &Scheduling::reuse},
        OptionalMember{"queuedTime", &QueueRecord::queuedTime}, OptionalMember{"attempt", &QueueRecord::attempt},
        OptionalMember{"lastEnding", &QueueRecord::lastEnding},
        OptionalMember{"ownOutputDir", &QueueRecord::hasOwnOutputDir});
};

template <>
struct Layout<ListedJob> {
    static constexpr auto members = std::tuple_cat(Layout<JobListInfo>::members, Layout<QueueRecord>::members,
                                                   std::make_tuple(OptionalMember{"waitReason", &ListedJob::waitReason},
                                                                   OptionalMember{"waitName", &ListedJob::waitName}));
};

} // namespace json
