#pragma once

#include "formats/Scheduling.h"
#include "front_end/jobs/JobRow.h"
#include "front_end/output/JsonOutput.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <unordered_map>

namespace web {

/// How jobs have ended that did not succeed: their first message and their last progress, which only their files tell.
/// There may be many such jobs: their files are read when an answer needs them, and the last ones are kept. Threads:
/// any.
class JobEndings {
public:
    /// The most jobs whose files are read for one answer.
    static constexpr std::size_t mostRead = 1000;
    static constexpr std::size_t mostKept = 10'000;
    /// Longer messages are cut in rows. Units: characters.
    static constexpr std::size_t longestMessage = 500;

    /// The rows of one answer.
    class Answer {
    public:
        /// `members`: those that the answer shows.
        Answer(JobEndings& owner, const front_end::JobMembers& members);

        /// Appends a row. One that is not known yet, because this answer has read enough, lacks "message" and
        /// "progress".
        void Append(front_end::JobRow row, std::wstring& json);

    private:
        JobEndings& endings;
        const front_end::JobMembers shown;
        const front_end::JobMembers shownOfUnknown;
        std::size_t left = mostRead;
    };

private:
    struct Ending {
        /// A job that runs again ends at another time.
        std::wstring endTime;
        std::wstring message;
        std::int32_t progress = 0;
    };

    bool TakeKnown(front_end::JobRow& row) const;
    void Read(front_end::JobRow& row);
    void Keep(const front_end::JobRow& row);

    mutable std::mutex mutex;
    std::unordered_map<std::wstring, Ending> endingOfId;
    /// The oldest first.
    std::deque<std::wstring> kept;
};

} // namespace web
