#pragma once

#include "CommonControllerLib/JobEntry.h"
#include "formats/Scheduling.h"

/// A job of a host: what the host keeps beside the record, and a scenario that is not trusted.
class HostJobEntry : public JobEntry {
public:
    HostJobEntry() = default;
    HostJobEntry(const JobListInfo& record, QueueRecord queueRecord)
        : JobEntry(record), queue(std::move(queueRecord)) {}

    /// A scenario may have replaced its work directory by a link: then no file is created in the link's target. The
    /// function module requests the stop in another way, too.
    bool OnCancelJob() override;

    /// Sets the status to `Queued` and removes what an interrupted run has left in the record.
    void Requeue();

    QueueRecord queue;
};

/// Returns what the host keeps of a job; the default record for an entry of another class.
const QueueRecord& QueueRecordOf(const JobEntry& job);
