#include "companion/JobListFile.h"

#include <mutex>
#include <optional>

#include "companion/ControllerCSWrapper.h"
#include "companion/UtcStamp.h"
#include "companion/json/Reading.h"
#include "companion/json/RecordLayouts.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"

namespace job_list_file {

namespace {

struct JobList {
    std::vector<JobListInfo> records;
};

std::wstring BackupOf(const std::wstring& path) {
    return path + L".bak";
}

} // namespace

} // namespace job_list_file

namespace json {

template <>
struct Layout<job_list_file::JobList> {
    static constexpr auto members =
        std::make_tuple(Member{"JobList", &job_list_file::JobList::records, Presence::Required});
};

} // namespace json

namespace job_list_file {

namespace {

/// Spares reading the file before each write only to learn whether it is worth a backup.
struct KnownGood {
    std::mutex mutex;
    /// The state of the file that this process wrote last or read without a problem.
    std::optional<platform::FileStamp> stamp;
};

KnownGood& TheKnownGood() {
    static KnownGood knownGood;
    return knownGood;
}

/// A name beside the file that nothing has yet.
std::wstring FreeCorruptName(const std::wstring& path) {
    const std::wstring name = path + L".corrupt-" + UtcStamp(platform::Now());
    std::wstring candidate = name;
    for (int number = 2; platform::Exists(candidate); ++number) {
        candidate = name + L"-" + std::to_wstring(number);
    }
    return candidate;
}

/// Renames what stands in the list's place, and says in `problem` where it is kept.
void SetAside(const std::wstring& path, std::wstring& problem) {
    const std::wstring corrupt = FreeCorruptName(path);
    const platform::Error error = platform::RenameFile(path, corrupt);
    problem += error ? L". It could not be kept aside: " + error.Text()
                     : L". It is kept as " + platform::ToNativeText(corrupt);
}

/// Reads one file, which need not be the list itself.
bool ReadList(const std::wstring& path, JobList& list, std::wstring& problem) {
    return json::ReadFile(path, json::largestText, list, problem);
}

bool ReadBackup(const std::wstring& path, JobList& list, const std::wstring& problem) {
    std::wstring backupProblem;
    if (!ReadList(BackupOf(path), list, backupProblem)) {
        ControllerCSWrapper::WriteErrorLog(L"The job list cannot be read: " + problem +
                                           L". There is no usable backup: " + backupProblem);
        return false;
    }
    ControllerCSWrapper::WriteWarnLog(L"The job list cannot be read: " + problem +
                                      L". The backup is used in its place: " + platform::ToNativeText(BackupOf(path)));
    return true;
}

void WarnOfForgottenBackup(const std::wstring& path) {
    if (platform::Exists(BackupOf(path))) {
        ControllerCSWrapper::WriteWarnLog(L"There is no job list " + platform::ToNativeText(path) +
                                          L": starting with an empty one. To have an earlier one back, rename " +
                                          platform::ToNativeText(BackupOf(path)) + L" before the next job is added");
    }
}

bool ReadOrRestore(const std::wstring& path, JobList& list) {
    auto& knownGood = TheKnownGood();
    const auto stamp = platform::StampOf(path);
    if (!stamp) {
        WarnOfForgottenBackup(path);
        return false;
    }
    std::wstring problem;
    if (ReadList(path, list, problem)) {
        knownGood.stamp = stamp;
        return true;
    }
    SetAside(path, problem);
    return ReadBackup(path, list, problem);
}

/// True when what stands in the list's place is a list. What is something else is kept aside.
bool IsWorthBackup(const std::wstring& path) {
    const auto stamp = platform::StampOf(path);
    if (!stamp || stamp == TheKnownGood().stamp) {
        return stamp.has_value();
    }
    JobList list;
    std::wstring problem;
    if (ReadList(path, list, problem)) {
        return true;
    }
    SetAside(path, problem);
    ControllerCSWrapper::WriteWarnLog(L"The job list has been changed and cannot be read: " + problem);
    return false;
}

} // namespace

bool Read(const std::wstring& path, std::vector<JobListInfo>& records) {
    const std::scoped_lock lock(TheKnownGood().mutex);
    JobList list;
    if (!ReadOrRestore(path, list)) {
        return false;
    }
    records = std::move(list.records);
    return true;
}

platform::Error Write(const std::wstring& path, std::string_view bytes) {
    auto& knownGood = TheKnownGood();
    const std::scoped_lock lock(knownGood.mutex);
    const platform::Error error = IsWorthBackup(path) ? platform::ReplaceFileKeepingBackup(path, bytes, BackupOf(path))
                                                      : platform::ReplaceFile(path, bytes);
    if (!error) {
        knownGood.stamp = platform::StampOf(path);
    }
    return error;
}

} // namespace job_list_file
