#include "formats/JobListFile.h"

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <optional>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Boundary.h"
#include "formats/json/Reading.h"
#include "formats/json/RecordLayouts.h"
#include "formats/json/Writing.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "platform/system/Clock.h"
#include "text/StrictUtf8.h"

namespace job_list_file {

namespace {

struct JobList {
    std::vector<JobListInfo> records;
};

/// The only member that is read from a list with errors.
struct JobListVersion {
    std::int64_t version = json::Version::newest;
};

} // namespace

} // namespace job_list_file

namespace json {

template <>
struct Layout<job_list_file::JobList> {
    static constexpr auto members =
        std::make_tuple(Version(), Member{"JobList", &job_list_file::JobList::records, Presence::Required});
};

template <>
struct Layout<job_list_file::JobListVersion> {
    static constexpr auto members = std::make_tuple(Member{"version", &job_list_file::JobListVersion::version});
};

} // namespace json

namespace job_list_file {

namespace {

using platform::Error;
using platform::ErrorKind;

/// The last list whose write failed.
struct Unwritten {
    std::wstring path;
    std::string bytes;
    int attempts = 1;
};

struct State {
    std::mutex mutex;
    /// The file that this process last wrote, or read without an error. If it is unchanged, it need not be read again
    /// before a write to decide whether to keep a backup.
    std::optional<platform::FileStamp> knownGood;
    std::optional<Unwritten> unwritten;
};

State& TheState() {
    static State state;
    return state;
}

std::wstring BackupOf(const std::wstring& path) {
    return path + L".bak";
}

std::wstring ReplacedOf(const std::wstring& path) {
    return path + L".replaced";
}

/// The prefix of the names under which invalid files are kept.
std::wstring CorruptPrefix(const std::wstring& path) {
    return path + L".corrupt-";
}

/// Returns a name beside the file that is not in use.
std::wstring FreeCorruptName(const std::wstring& path) {
    const std::wstring name = CorruptPrefix(path) + platform::UtcStamp(platform::Now());
    std::wstring candidate = name;
    for (int number = 2; platform::Exists(candidate); ++number) {
        candidate = name + L"-" + std::to_wstring(number);
    }
    return candidate;
}

std::wstring KeptAs(const Error& error, const std::wstring& name) {
    return error ? L". It could not be kept aside: " + error.Text()
                 : L". It is kept as " + platform::ToNativeText(name);
}

bool IsOfNewerVersion(const std::string& bytes) {
    JobListVersion list;
    std::wstring problem;
    return json::Read(bytes, list, problem) && list.version > json::Version::newest;
}

/// The result of reading the job list file: a valid list, no file, an invalid list, or a file that must be left alone.
enum class Found { List, Nothing, NoList, Unusable };

Found LookAt(const std::wstring& path, std::string& bytes, JobList& list, std::wstring& problem) {
    if (const Error error = platform::ReadFileRetrying(path, json::largestText, bytes)) {
        problem = platform::ToNativeText(path) + L": " + error.Text();
        const bool isNoFile = error.kind == ErrorKind::NotSupported;
        return error.kind == ErrorKind::NotFound ? Found::Nothing : isNoFile ? Found::NoList : Found::Unusable;
    }
    if (json::Read(bytes, list, problem)) {
        return Found::List;
    }
    problem = json::ProblemInFile(path, problem);
    return IsOfNewerVersion(bytes) ? Found::Unusable : Found::NoList;
}

/// Replaces `path` and keeps the old version as `keptAs`. If `path` is a file, it exists at every moment.
Error ReplaceKeeping(const std::wstring& path, std::string_view bytes, const std::wstring& keptAs) {
    if (!platform::IsDirectory(path)) {
        return platform::ReplaceFileKeepingBackup(path, bytes, keptAs);
    }
    const Error error = platform::RenameFile(path, keptAs);
    return error ? error : platform::ReplaceFile(path, bytes);
}

void WarnOfForgottenBackup(const std::wstring& path) {
    if (platform::Exists(BackupOf(path))) {
        ControllerCSWrapper::WriteWarnLog(L"There is no job list " + platform::ToNativeText(path) +
                                          L": starting with an empty one. To have an earlier one back, rename " +
                                          platform::ToNativeText(BackupOf(path)) + L" before the next job is added");
    }
}

/// Replaces an invalid list by its backup; `problem` is the error for the log.
bool Restore(const std::wstring& path, JobList& list, const std::wstring& problem) {
    const std::wstring corrupt = FreeCorruptName(path);
    std::string bytes;
    std::wstring backupProblem;
    if (LookAt(BackupOf(path), bytes, list, backupProblem) != Found::List) {
        ControllerCSWrapper::WriteErrorLog(L"The job list cannot be read: " + problem +
                                           KeptAs(platform::RenameFile(path, corrupt), corrupt) +
                                           L". There is no usable backup: " + backupProblem);
        return false;
    }
    ControllerCSWrapper::WriteWarnLog(L"The job list cannot be read: " + problem +
                                      KeptAs(ReplaceKeeping(path, bytes, corrupt), corrupt) +
                                      L". The backup is used in its place: " + platform::ToNativeText(BackupOf(path)));
    TheState().knownGood = platform::StampOf(path);
    return true;
}

bool ReadOrRestore(const std::wstring& path, JobList& list) {
    const auto stamp = platform::StampOf(path);
    std::string bytes;
    std::wstring problem;
    switch (LookAt(path, bytes, list, problem)) {
    case Found::List:
        TheState().knownGood = stamp;
        return true;
    case Found::Nothing:
        WarnOfForgottenBackup(path);
        return false;
    case Found::NoList:
        return Restore(path, list, problem);
    case Found::Unusable:
        break;
    }
    ControllerCSWrapper::WriteErrorLog(L"The job list cannot be used, and is left as it is: " + problem);
    return false;
}

/// Replaces a file that another program has written.
Error ReplaceExternalEdit(const std::wstring& path, std::string_view bytes) {
    std::string found;
    JobList list;
    std::wstring problem;
    const bool isList = LookAt(path, found, list, problem) == Found::List;
    const std::wstring name = isList ? ReplacedOf(path) : FreeCorruptName(path);
    const Error error = ReplaceKeeping(path, bytes, name);
    if (!error) {
        ControllerCSWrapper::WriteWarnLog(
            L"The job list has been changed by another program" +
            (isList ? L": " + platform::ToNativeText(path) : L" and cannot be read: " + problem) + KeptAs(error, name));
    }
    return error;
}

Error Replace(const std::wstring& path, std::string_view bytes) {
    const auto stamp = platform::StampOf(path);
    const bool isForeign = stamp && stamp != TheState().knownGood;
    return isForeign ? ReplaceExternalEdit(path, bytes)
                     : platform::ReplaceFileKeepingBackup(path, bytes, BackupOf(path));
}

void NoteSuccess(State& state, const std::wstring& path) {
    state.knownGood = platform::StampOf(path);
    if (state.unwritten) {
        ControllerCSWrapper::WriteWarnLog(L"The job list " + platform::ToNativeText(path) +
                                          L" is written again, after failed attempts: " +
                                          std::to_wstring(state.unwritten->attempts));
        state.unwritten.reset();
    }
}

void NoteFailure(State& state, const std::wstring& path, std::string_view bytes, const Error& error) {
    if (state.unwritten) {
        state.unwritten = Unwritten{path, std::string(bytes), state.unwritten->attempts + 1};
        return;
    }
    state.unwritten = Unwritten{path, std::string(bytes)};
    ControllerCSWrapper::WriteWarnLog(L"The job list cannot be written: " + platform::ToNativeText(path) + L": " +
                                      error.Text() + L". Jobs go on; until it can be written, a restart loses changes");
}

/// Produces the same bytes as `ControllerCSWrapper::Serialize` for the message "JobList".
std::string ListText(std::size_t count, const std::function<const JobListInfo*()>& next) {
    constexpr std::size_t sample = 32;
    std::string bytes = R"({"JobList":[)";
    std::wstring row;
    std::string rowBytes;
    std::size_t written = 0;
    for (const JobListInfo* record = next(); record != nullptr; record = next()) {
        if (written++ == sample) {
            bytes.reserve(bytes.size() / sample * count * 17 / 16);
        }
        row.assign(written > 1 ? L"," : L"");
        json::Append(*record, row);
        std::size_t badAt = 0;
        // Serialized JSON contains only valid characters.
        (void)text::EncodeUtf8(row, rowBytes, badAt);
        bytes += rowBytes;
    }
    return bytes + "]}";
}

bool WriteAndNote(State& state, const std::wstring& path, std::string_view bytes) {
    const Error error = Replace(path, bytes);
    if (error) {
        NoteFailure(state, path, bytes, error);
    } else {
        NoteSuccess(state, path);
    }
    return !error;
}

} // namespace

bool Read(const std::wstring& path, std::vector<JobListInfo>& records) {
    const std::scoped_lock lock(TheState().mutex);
    JobList list;
    if (!ReadOrRestore(path, list)) {
        return false;
    }
    records = std::move(list.records);
    return true;
}

void RemoveLeftovers(const std::wstring& path) {
    for (const std::wstring& target : {path, BackupOf(path), ReplacedOf(path)}) {
        platform::RemoveStaleTemporaries(target);
    }
}

std::wstring ReasonUnusable(const std::wstring& path) {
    return boundary::Guard("ReasonUnusable", [&] {
        std::string bytes;
        JobList list;
        std::wstring problem;
        const bool isInTheWay = LookAt(path, bytes, list, problem) == Found::Unusable;
        return isInTheWay ? problem : std::wstring();
    });
}

std::vector<std::wstring> KeptAside(const std::wstring& path) {
    return boundary::Guard("KeptAside", [&] {
        const std::wstring directory = platform::ParentDirectory(path);
        const std::wstring prefix = platform::FileName(CorruptPrefix(path));
        std::vector<std::wstring> files;
        std::vector<platform::DirectoryEntry> entries;
        if (!platform::ListDirectory(directory, entries)) {
            for (const platform::DirectoryEntry& entry : entries) {
                if (entry.name.starts_with(prefix)) {
                    files.push_back(platform::ResolveAgainst(directory, entry.name));
                }
            }
        }
        std::sort(files.begin(), files.end());
        return files;
    });
}

bool Write(const std::wstring& path, std::string_view bytes) {
    const std::scoped_lock lock(TheState().mutex);
    return WriteAndNote(TheState(), path, bytes);
}

bool WriteRows(const std::wstring& path, std::size_t count, const std::function<const JobListInfo*()>& next) {
    return boundary::Guard("WriteRows", [&] { return Write(path, ListText(count, next)); });
}

bool IsUnwritten() {
    const std::scoped_lock lock(TheState().mutex);
    return TheState().unwritten.has_value();
}

void RetryWrite() {
    boundary::Guard("RetryWrite", [] {
        const std::scoped_lock lock(TheState().mutex);
        if (const auto unwritten = TheState().unwritten) {
            WriteAndNote(TheState(), unwritten->path, unwritten->bytes);
        }
        return true;
    });
}

} // namespace job_list_file
