#pragma once

#include "CommonControllerLib/JobEntry.h"
#include "controller_host/RetryPolicy.h"
#include "formats/Scheduling.h"
#include "platform/files/FileSystem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

/// A job of a host: what the host keeps beside the record, and a scenario that is not trusted.
class HostJobEntry : public JobEntry {
public:
    HostJobEntry() = default;
    HostJobEntry(const JobListInfo& record, QueueRecord queueRecord)
        : JobEntry(record), queue(std::move(queueRecord)) {}
    /// Takes over the texts of the row: a copy of those of a long list leaves gaps in the memory.
    explicit HostJobEntry(ListedJob row) : queue(std::move(static_cast<QueueRecord&>(row))) {
        info = std::move(static_cast<JobListInfo&>(row));
    }

    /// A scenario may have replaced its work directory by a link: then no file is created in the link's target. The
    /// function module requests the stop in another way, too.
    bool OnCancelJob() override;

    /// Sets the status to `Queued` and removes what an interrupted run has left in the record.
    void Requeue();

    /// Requests the stop of the running job. It waits again when its process has ended without success.
    void Interrupt();

    /// Counts the attempt that begins at `now`, once for each. Units: seconds since 1970 UTC.
    void NoteStart(std::int64_t now);
    /// As of the base class. Stops an attempt that exceeds a limit; queues a failed job again that has retries left.
    bool OnCheckUpdate() override;

    QueueRecord queue;

private:
    void EnforceLimits();
    void RenewLastSign();
    /// The exit code of the job's process, if it has ended.
    std::optional<std::int32_t> ExitCodeOfEnded() const;
    void EndAttempt(bool hasCrashed);
    void KeepLog() const;

    bool hasStarted = false;
    bool isInterrupted = false;
    retry_policy::Attempt attempt;
    /// Why the host has stopped the attempt.
    std::wstring stopReason;
    std::optional<platform::FileStamp> logStamp;
};

/// Returns what the host keeps of a job; the default record for an entry of another class.
const QueueRecord& QueueRecordOf(const JobEntry& job);
