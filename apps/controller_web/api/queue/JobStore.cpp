#include "controller_web/api/queue/JobStore.h"

#include <algorithm>
#include <utility>

#include "text/Numbers.h"

namespace web {
namespace {

bool HasLowerNumber(const Row& left, const Row& right) {
    return left->job.seqId < right->job.seqId;
}

bool IsSame(const front_end::JobRow& left, const front_end::JobRow& right) {
    return left.message == right.message && left.progress == right.progress && left.job == right.job;
}

} // namespace

JobStore::JobStore() : published(std::make_shared<const std::vector<Row>>()) {}

void JobStore::Replace(const std::vector<Row>& list) {
    const std::lock_guard lock(mutex);
    rows.clear();
    placeOfId.clear();
    counts = {};
    for (const Row& row : list) {
        ++CountOf(counts, row->job.status);
        Place(row);
    }
    published.reset();
}

bool JobStore::Put(front_end::JobRow row) {
    const std::lock_guard lock(mutex);
    const auto known = placeOfId.find(row.job.id);
    if (known != placeOfId.end()) {
        if (IsSame(*rows[known->second], row)) {
            return false;
        }
        --CountOf(counts, rows[known->second]->job.status);
    }
    ++CountOf(counts, row.job.status);
    Place(std::make_shared<const front_end::JobRow>(std::move(row)));
    published.reset();
    return true;
}

void JobStore::Place(Row row) {
    const auto [known, isNew] = placeOfId.try_emplace(row->job.id, rows.size());
    if (!isNew) {
        rows[known->second] = std::move(row);
        return;
    }
    isSorted = isSorted && (rows.empty() || (rows.back() != nullptr && HasLowerNumber(rows.back(), row)));
    rows.push_back(std::move(row));
}

bool JobStore::Remove(const std::wstring& id) {
    const std::lock_guard lock(mutex);
    const auto known = placeOfId.find(id);
    if (known == placeOfId.end()) {
        return false;
    }
    --CountOf(counts, rows[known->second]->job.status);
    rows[known->second].reset();
    placeOfId.erase(known);
    hasGaps = true;
    published.reset();
    return true;
}

void JobStore::Compact() const {
    std::erase(rows, nullptr);
    std::sort(rows.begin(), rows.end(), HasLowerNumber);
    for (std::size_t place = 0; place < rows.size(); ++place) {
        placeOfId[rows[place]->job.id] = place;
    }
    hasGaps = false;
    isSorted = true;
}

Row JobStore::FindId(const std::wstring& id) const {
    const std::lock_guard lock(mutex);
    const auto known = placeOfId.find(id);
    return known == placeOfId.end() ? nullptr : rows[known->second];
}

Row JobStore::Find(const std::wstring& name) const {
    if (Row row = FindId(name)) {
        return row;
    }
    const std::int32_t number = numbers::ReadInteger(name);
    if (numbers::DecimalText(number) != name) {
        return nullptr;
    }
    const std::lock_guard lock(mutex);
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&](const Row& row) { return row != nullptr && row->job.seqId == number; });
    return found == rows.end() ? nullptr : *found;
}

Snapshot JobStore::Take() const {
    const std::lock_guard lock(mutex);
    if (published == nullptr) {
        if (hasGaps || !isSorted) {
            Compact();
        }
        published = std::make_shared<const std::vector<Row>>(rows);
    }
    return {published, counts};
}

} // namespace web
