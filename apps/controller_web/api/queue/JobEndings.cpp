#include "controller_web/api/queue/JobEndings.h"

#include <utility>

#include "text/CodeUnits.h"

namespace web {
namespace {

/// A job that has succeeded has 100 %, and lists do not show its messages.
bool NeedsFiles(JobStatus status) {
    return status == JobStatus::Failed || status == JobStatus::Canceled;
}

/// Not between the halves of a character.
void Cut(std::wstring& message) {
    if (message.size() <= JobEndings::longestMessage) {
        return;
    }
    message.resize(JobEndings::longestMessage - 1);
    if (text::IsHighSurrogate(static_cast<std::uint32_t>(message.back()))) {
        message.pop_back();
    }
    message += L'\x2026';
}

} // namespace

JobEndings::Answer::Answer(JobEndings& owner, const front_end::JobMembers& members)
    : endings(owner), shown(members), shownOfUnknown(members.Without({L"message", L"progress"})) {}

void JobEndings::Answer::Append(front_end::JobRow row, std::wstring& json) {
    bool isKnown = shown == shownOfUnknown || !NeedsFiles(row.job.status) || endings.TakeKnown(row);
    if (!isKnown && left > 0) {
        --left;
        endings.Read(row);
        isKnown = true;
    }
    front_end::AppendJob(std::move(row), isKnown ? shown : shownOfUnknown, json);
}

bool JobEndings::TakeKnown(front_end::JobRow& row) const {
    const std::lock_guard lock(mutex);
    const auto known = endingOfId.find(row.job.id);
    if (known == endingOfId.end() || known->second.endTime != row.job.endTime) {
        return false;
    }
    row.message = known->second.message;
    row.progress = known->second.progress;
    return true;
}

void JobEndings::Read(front_end::JobRow& row) {
    front_end::ReadEnding(row);
    Cut(row.message);
    Keep(row);
}

void JobEndings::Keep(const front_end::JobRow& row) {
    const std::lock_guard lock(mutex);
    const auto [place, isNew] = endingOfId.try_emplace(row.job.id);
    place->second = {row.job.endTime, row.message, row.progress};
    if (isNew) {
        kept.push_back(row.job.id);
    }
    if (kept.size() > mostKept) {
        endingOfId.erase(kept.front());
        kept.pop_front();
    }
}

} // namespace web
