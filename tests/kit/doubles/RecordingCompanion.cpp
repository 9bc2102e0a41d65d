#include "kit/doubles/RecordingCompanion.h"

#include "text/Numbers.h"

#include <cstdlib>

namespace {

RecordingCompanion* current = nullptr;

constexpr std::wstring_view jobListToken = L"job list ";

} // namespace

RecordingCompanion::RecordingCompanion() {
    current = this;
}

RecordingCompanion::~RecordingCompanion() {
    current = nullptr;
}

RecordingCompanion& RecordingCompanion::Current() {
    if (current == nullptr) {
        std::abort(); // the test has not created one
    }
    return *current;
}

std::vector<std::wstring> RecordingCompanion::Events() const {
    const std::lock_guard lock(mutex);
    return events;
}

std::vector<std::wstring> RecordingCompanion::Events(std::wstring_view prefix) const {
    const std::lock_guard lock(mutex);
    std::vector<std::wstring> chosen;
    for (const std::wstring& event : events) {
        if (event.starts_with(prefix)) {
            chosen.push_back(event.substr(prefix.size()));
        }
    }
    return chosen;
}

void RecordingCompanion::Forget() {
    const std::lock_guard lock(mutex);
    events.clear();
    jobLists.clear();
    jobListWrites.clear();
    runRequests.clear();
    filesRead.clear();
}

std::vector<std::vector<JobListInfo>> RecordingCompanion::JobListWrites() const {
    const std::lock_guard lock(mutex);
    return jobListWrites;
}

std::vector<RecordingCompanion::RunRequest> RecordingCompanion::RunRequests() const {
    const std::lock_guard lock(mutex);
    return runRequests;
}

std::vector<std::wstring> RecordingCompanion::FilesRead() const {
    const std::lock_guard lock(mutex);
    return filesRead;
}

void RecordingCompanion::AddEvent(std::wstring_view prefix, const std::wstring& text) {
    const std::lock_guard lock(mutex);
    events.push_back(std::wstring(prefix) + text);
}

std::wstring RecordingCompanion::AddJobList(const std::wstring& key, const std::vector<JobListInfo>& records) {
    const std::lock_guard lock(mutex);
    jobLists.push_back(records);
    return key + L": " + std::wstring(jobListToken) + std::to_wstring(jobLists.size() - 1);
}

bool RecordingCompanion::AddWrite(const std::wstring& json, const std::wstring& path) {
    const std::lock_guard lock(mutex);
    events.push_back(L"write: " + path);
    const std::wstring prefix = L"JobList: " + std::wstring(jobListToken);
    if (json.starts_with(prefix)) {
        const auto index = static_cast<std::size_t>(numbers::ReadInteger(json.substr(prefix.size())));
        jobListWrites.push_back(jobLists.at(index));
    }
    return canWriteFiles;
}

std::wstring RecordingCompanion::AddRunRequest(RunRequest request) {
    const std::lock_guard lock(mutex);
    runRequests.push_back(std::move(request));
    return L"run request of " + runRequests.back().jobId;
}

void RecordingCompanion::AddFileRead(const std::wstring& path) {
    const std::lock_guard lock(mutex);
    filesRead.push_back(path);
}
