#pragma once

#include "CommonControllerLib/JobEntry.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Finds jobs of a list by id, number and status without walking the list. Ids and numbers may occur more than once, as
/// in a list that was edited by hand. Not thread-safe.
class JobIndex {
public:
    using Jobs = std::list<std::shared_ptr<JobEntry>>;
    using Position = Jobs::iterator;

    /// Adds the jobs at the end of the list that were not added before.
    void AddNew(Jobs& jobs);
    /// Takes over the status of a job after a change.
    void Update(JobEntry& job);
    /// Must be called while the job exists; it may have left the list.
    void Remove(const JobEntry& job);

    /// The jobs whose id or number (decimal text) is among `names`, in list order.
    std::vector<Position> Named(const std::set<std::wstring>& names) const;
    /// The jobs with these ids, in list order.
    std::vector<Position> WithIds(const std::set<std::wstring>& ids) const;
    /// The running jobs and those being cancelled, in list order.
    std::vector<Position> Active() const;
    std::size_t ActiveCount() const { return active.size(); }
    bool HasQueued() const { return queued > 0; }
    struct Found {
        Position position;
        /// Increases along the list.
        std::uint64_t order = 0;
    };
    /// A job with this id; nothing if none is listed.
    std::optional<Found> WithId(const std::wstring& id) const;
    bool Contains(const std::wstring& id) const { return byId.contains(id); }

private:
    struct Row {
        /// Invalid once the job has left the list.
        Position position;
        const JobEntry* job = nullptr;
        /// Increases along the list.
        std::uint64_t order = 0;
        /// Counted as `Queued`.
        bool isQueued = false;
    };

    using Rows = std::unordered_multimap<std::wstring_view, Row>;

    Rows::iterator Find(const JobEntry& job);
    std::vector<const Row*> RowsWithIds(const std::set<std::wstring>& ids) const;
    void SetStatus(Row& row, JobStatus status);
    static std::vector<Position> InOrder(std::vector<const Row*> rows);

    /// The keys refer to the ids in the jobs, which never change.
    Rows byId;
    std::unordered_multimap<std::int32_t, const Row*> byNumber;
    std::map<std::uint64_t, Position> active;
    std::size_t queued = 0;
    std::uint64_t nextOrder = 0;
};
