#include "controller_web/api/queue/QueueTracker.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "formats/JobStates.h"
#include "formats/json/Writing.h"
#include "front_end/jobs/JobFiles.h"
#include "front_end/output/JsonOutput.h"
#include "text/Text.h"

namespace web {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// The host's list is fetched in parts, so that neither side has all of it in one text.
constexpr std::int32_t rowsOfPart = 1000;
/// Nothing tells that another front end has paused the queue.
constexpr std::chrono::seconds pollInterval{2};
/// The most waiting jobs whose reason is kept up to date.
constexpr std::size_t mostRefreshed = 500;
constexpr milliseconds idleInterval{500};

/// Without what lists do not show: there may be many rows.
void DropUnlisted(ListedJob& job) {
    for (std::wstring* const text : {&job.scenario.path, &job.scenario.relativePath, &job.extraText}) {
        std::wstring().swap(*text);
    }
    std::vector<InputFileSpec>().swap(job.scenario.inputs);
}

front_end::JobRow RowOf(ListedJob job, const Row& former) {
    DropUnlisted(job);
    front_end::JobRow row;
    row.progress = std::clamp(job.progress, 0, 100);
    row.message = former != nullptr && IsActive(job.status) ? former->message : std::wstring();
    row.job = std::move(job);
    return row;
}

std::wstring ChangesJson(const JobStore& jobs, JobEndings::Answer answer, const std::set<std::wstring>& changed,
                         const std::set<std::wstring>& removed, const QueueStatus& status) {
    std::wstring json = L"{\"changed\":[";
    for (const std::wstring& id : changed) {
        if (const Row row = jobs.FindId(id)) {
            json += json.back() == L'[' ? L"" : L",";
            answer.Append(*row, json);
        }
    }
    json += L"],\"removed\":";
    json::Append(std::vector<std::wstring>(removed.begin(), removed.end()), json);
    return json + L",\"queue\":" + QueuePartJson(status) + L"}";
}

} // namespace

void QueueTracker::Begin(front_end::HostSession& session, const front_end::HostState& host) {
    std::vector<Row> rows;
    std::vector<ListedJob> part;
    std::int32_t last = 0;
    do {
        part = session.FetchJobs({{}, last, rowsOfPart});
        for (ListedJob& job : part) {
            last = std::max(last, job.seqId);
            rows.push_back(std::make_shared<const front_end::JobRow>(RowOf(std::move(job), nullptr)));
        }
    } while (part.size() == rowsOfPart);
    const bool isPaused = session.FetchQueueState().isPaused;
    jobs.Replace(rows);
    {
        const std::lock_guard lock(mutex);
        status.host = host;
        status.isPaused = isPaused;
        isKnown = true;
    }
    changed.clear();
    removed.clear();
    ReadMessages();
    events.Reset();
    events.Publish("host", R"({"running":true})");
}

void QueueTracker::End(const front_end::HostState& host) {
    {
        const std::lock_guard lock(mutex);
        status.host = host;
    }
    events.Publish("host", R"({"running":false})");
}

void QueueTracker::Take(ListedJob job) {
    const std::wstring id = job.id;
    const Row former = jobs.FindId(id);
    mayUnblock = mayUnblock || (former != nullptr && former->job.status != job.status);
    CountEnd(former, job.status);
    if (jobs.Put(RowOf(std::move(job), former))) {
        changed.insert(id);
        removed.erase(id);
    }
}

void QueueTracker::CountEnd(const Row& former, JobStatus current) {
    if (former != nullptr && !IsOver(former->job.status) && IsOver(current)) {
        const std::lock_guard lock(mutex);
        ++ended[current];
    }
}

std::map<JobStatus, std::uint64_t> QueueTracker::Ended() const {
    const std::lock_guard lock(mutex);
    return ended;
}

void QueueTracker::Remove(const std::wstring& id) {
    if (jobs.Remove(id)) {
        changed.erase(id);
        removed.insert(id);
        mayUnblock = true;
    }
}

/// A report has no other data.
void QueueTracker::TakeReport(const JobStatusInfo& report) {
    const Row row = jobs.FindId(report.id);
    if (row == nullptr) {
        return;
    }
    Take(front_end::Updated(row->job, report));
    // The message may be another one with the same percentage.
    changed.insert(report.id);
}

void QueueTracker::Apply(front_end::HostSession& session, const std::vector<JobStatusInfo>& updates) {
    std::vector<std::wstring> incomplete;
    for (const JobStatusInfo& update : updates) {
        if (update.status == unlistedStatus) {
            Remove(update.id);
        } else if (update.status == JobStatus::Queued || jobs.FindId(update.id) == nullptr) {
            incomplete.push_back(update.id);
        } else {
            TakeReport(update);
        }
    }
    Refresh(session, incomplete);
}

void QueueTracker::Refresh(front_end::HostSession& session, const std::vector<std::wstring>& ids) {
    std::set<std::wstring> missing(ids.begin(), ids.end());
    for (auto first = ids.begin(); first != ids.end();) {
        const auto end = first + std::min<std::ptrdiff_t>(rowsOfPart, ids.end() - first);
        for (ListedJob& job : session.FetchJobs({{first, end}})) {
            missing.erase(job.id);
            Take(std::move(job));
        }
        first = end;
    }
    for (const std::wstring& id : missing) {
        Remove(id);
    }
}

void QueueTracker::SetPaused(bool isPaused) {
    const std::lock_guard lock(mutex);
    hasStatusChanged = hasStatusChanged || status.isPaused != isPaused;
    status.isPaused = isPaused;
}

milliseconds QueueTracker::UntilDue() const {
    if (changed.empty() && removed.empty() && !hasStatusChanged) {
        return idleInterval;
    }
    const auto left = std::chrono::ceil<milliseconds>(lastPublication + interval - steady_clock::now());
    return std::clamp(left, milliseconds(0), idleInterval);
}

void QueueTracker::PollQueueState(front_end::HostSession& session) {
    const auto now = steady_clock::now();
    if (events.ClientCount() > 0 && now - lastPoll >= pollInterval) {
        lastPoll = now;
        SetPaused(session.FetchQueueState().isPaused);
    }
}

void QueueTracker::PublishIfDue(front_end::HostSession& session) {
    PollQueueState(session);
    if ((changed.empty() && removed.empty() && !hasStatusChanged) || UntilDue() > milliseconds(0)) {
        return;
    }
    if (std::exchange(mayUnblock, false)) {
        RefreshWaiting(session);
    }
    ReadMessages();
    Publish();
}

void QueueTracker::RefreshWaiting(front_end::HostSession& session) {
    std::vector<std::wstring> waiting;
    const Snapshot snapshot = jobs.Take();
    for (const Row& row : *snapshot.rows) {
        if (!row->job.waitReason.empty() && waiting.size() < mostRefreshed) {
            waiting.push_back(row->job.id);
        }
    }
    Refresh(session, waiting);
    mayUnblock = false;
}

/// Of running jobs that have changed; at the beginning of all that run.
void QueueTracker::ReadMessages() {
    const auto read = [this](const Row& row) {
        if (row == nullptr || !IsActive(row->job.status)) {
            return;
        }
        if (const auto report = front_end::LastReportOf(row->job); report && report->message != row->message) {
            front_end::JobRow renewed = *row;
            renewed.message = report->message;
            jobs.Put(std::move(renewed));
        }
    };
    if (changed.empty()) {
        const Snapshot snapshot = jobs.Take();
        std::for_each(snapshot.rows->begin(), snapshot.rows->end(), read);
    }
    for (const std::wstring& id : changed) {
        read(jobs.FindId(id));
    }
}

void QueueTracker::Publish() {
    if (changed.size() + removed.size() > mostChanges) {
        events.Reset();
    } else {
        const JobEndings::Answer answer(endings, front_end::JobMembers::OfList());
        events.Publish("jobs", text::ToUtf8(ChangesJson(jobs, answer, changed, removed, Status())));
    }
    changed.clear();
    removed.clear();
    hasStatusChanged = false;
    lastPublication = steady_clock::now();
}

bool QueueTracker::IsKnown() const {
    const std::lock_guard lock(mutex);
    return isKnown;
}

QueueStatus QueueTracker::Status() const {
    const std::lock_guard lock(mutex);
    QueueStatus current = status;
    current.counts = jobs.Take().counts;
    return current;
}

} // namespace web
