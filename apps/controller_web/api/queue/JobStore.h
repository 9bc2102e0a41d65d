#pragma once

#include "formats/Scheduling.h"
#include "front_end/jobs/JobRow.h"
#include "front_end/output/StateJson.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace web {

/// A job of the list, with what is known without its files: `message` only while it runs (`JobEndings` has those of
/// others), no directories. Never changes: a change of the job makes a new row.
using Row = std::shared_ptr<const front_end::JobRow>;

/// The jobs at one moment. Rows are shared with the store and with other snapshots.
struct Snapshot {
    /// In the order of their numbers; never null.
    std::shared_ptr<const std::vector<Row>> rows;
    front_end::JobCounts counts;
};

/// The jobs that the host lists. Threads: any.
class JobStore {
public:
    JobStore();

    /// Takes a whole list instead of the one before.
    void Replace(const std::vector<Row>& list);
    /// Adds or replaces a job. Returns false if it is as before.
    bool Put(front_end::JobRow row);
    /// Returns false if there is no such job.
    bool Remove(const std::wstring& id);

    /// Null if there is none.
    Row FindId(const std::wstring& id) const;
    /// The job with this id or number (decimal text); null if there is none. Looks at all jobs for a number.
    Row Find(const std::wstring& name) const;
    /// As long as no job changes, the same list is returned.
    Snapshot Take() const;

private:
    void Place(Row row);
    /// Drops the places of removed rows.
    void Compact() const;

    mutable std::mutex mutex;
    /// With null for a removed one.
    mutable std::vector<Row> rows;
    mutable std::unordered_map<std::wstring, std::size_t> placeOfId;
    mutable bool hasGaps = false;
    mutable bool isSorted = true;
    front_end::JobCounts counts;
    /// Null if the rows have changed since.
    mutable std::shared_ptr<const std::vector<Row>> published;
};

} // namespace web
