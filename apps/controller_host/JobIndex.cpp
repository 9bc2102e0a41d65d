#include "controller_host/JobIndex.h"

#include "engine/Queue.h"
#include "text/Numbers.h"

#include <algorithm>
#include <iterator>
#include <utility>

void JobIndex::AddNew(Jobs& jobs) {
    auto position = jobs.end();
    while (position != jobs.begin() && Find(**std::prev(position)) == byId.end()) {
        --position;
    }
    for (; position != jobs.end(); ++position) {
        JobEntry& job = **position;
        Row& row = byId.emplace(job.GetId(), Row{position, &job, nextOrder++})->second;
        byNumber.emplace(job.GetSeqId(), &row);
        SetStatus(row, job.GetStatus());
    }
}

void JobIndex::Update(JobEntry& job) {
    if (const auto row = Find(job); row != byId.end()) {
        SetStatus(row->second, job.GetStatus());
    }
}

void JobIndex::Remove(const JobEntry& job) {
    const auto row = Find(job);
    if (row == byId.end()) {
        return;
    }
    // A status that is neither queued nor active.
    SetStatus(row->second, JobStatus::Success);
    const auto [first, last] = byNumber.equal_range(job.GetSeqId());
    byNumber.erase(std::find_if(first, last, [&](const auto& entry) { return entry.second == &row->second; }));
    byId.erase(row);
}

std::vector<JobIndex::Position> JobIndex::Named(const std::set<std::wstring>& names) const {
    std::vector<const Row*> found = RowsWithIds(names);
    for (const std::wstring& name : names) {
        const auto [first, last] = byNumber.equal_range(numbers::ReadInteger(name));
        for (auto row = first; row != last; ++row) {
            if (numbers::DecimalText(row->first) == name) {
                found.push_back(row->second);
            }
        }
    }
    return InOrder(std::move(found));
}

std::vector<JobIndex::Position> JobIndex::WithIds(const std::set<std::wstring>& ids) const {
    return InOrder(RowsWithIds(ids));
}

std::optional<JobIndex::Found> JobIndex::WithId(const std::wstring& id) const {
    const auto row = byId.find(id);
    return row == byId.end() ? std::nullopt : std::optional(Found{row->second.position, row->second.order});
}

std::vector<const JobIndex::Row*> JobIndex::RowsWithIds(const std::set<std::wstring>& ids) const {
    std::vector<const Row*> found;
    for (const std::wstring& id : ids) {
        const auto [first, last] = byId.equal_range(id);
        for (auto row = first; row != last; ++row) {
            found.push_back(&row->second);
        }
    }
    return found;
}

/// Each row once; a job may be named by its id and by its number.
std::vector<JobIndex::Position> JobIndex::InOrder(std::vector<const Row*> rows) {
    std::sort(rows.begin(), rows.end(), [](const Row* left, const Row* right) { return left->order < right->order; });
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    std::vector<Position> positions;
    positions.reserve(rows.size());
    std::transform(rows.begin(), rows.end(), std::back_inserter(positions),
                   [](const Row* row) { return row->position; });
    return positions;
}

std::vector<JobIndex::Position> JobIndex::Active() const {
    std::vector<Position> positions;
    positions.reserve(active.size());
    for (const auto& [order, position] : active) {
        positions.push_back(position);
    }
    return positions;
}

JobIndex::Rows::iterator JobIndex::Find(const JobEntry& job) {
    const auto [first, last] = byId.equal_range(job.GetId());
    const auto found = std::find_if(first, last, [&](const auto& entry) { return entry.second.job == &job; });
    return found == last ? byId.end() : found;
}

void JobIndex::SetStatus(Row& row, JobStatus status) {
    const bool isQueued = queue::CanStart(status);
    queued += isQueued ? 1U : 0U;
    queued -= row.isQueued ? 1U : 0U;
    row.isQueued = isQueued;
    if (IsActive(status)) {
        active.insert_or_assign(row.order, row.position);
    } else {
        active.erase(row.order);
    }
}
