#include "formats/JobListFile.h"

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <optional>
#include <utility>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Boundary.h"
#include "formats/JobListJournal.h"
#include "formats/json/Reading.h"
#include "formats/json/SchedulingLayouts.h"
#include "formats/json/Writing.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "platform/system/Clock.h"
#include "text/StrictUtf8.h"
#include "text/Text.h"

namespace job_list_file {

namespace {

/// Version 2 has a journal.
constexpr std::int32_t newestVersion = 2;

struct JobList {
    std::int32_t version = 1;
    /// Empty without a journal.
    std::wstring snapshotId;
    std::vector<ListedJob> rows;
};

struct ListVersion {
    static constexpr auto expected = L"version 2, the newest that this program knows";
    static bool Accepts(std::int32_t version) { return version >= 1 && version <= newestVersion; }
};

/// The only member that is read from a list with errors.
struct JobListVersion {
    std::int64_t version = newestVersion;
};

} // namespace

} // namespace job_list_file

namespace json {

template <>
struct Layout<job_list_file::JobList> {
    static constexpr auto members =
        std::make_tuple(Member{"version", &job_list_file::JobList::version, rule<job_list_file::ListVersion>},
                        Member{"snapshotId", &job_list_file::JobList::snapshotId},
                        Member{"JobList", &job_list_file::JobList::rows, Presence::Required});
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

struct State {
    std::mutex mutex;
    /// The file that this process last wrote, or read without an error. If it is unchanged, it need not be read again
    /// before a write to decide whether to keep a backup.
    std::optional<platform::FileStamp> knownGood;
    /// Failed writes since the last success.
    int failedWrites = 0;
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

std::wstring KeptAs(const Error& result, const std::wstring& name) {
    return result ? L". It is kept as " + platform::ToNativeText(name)
                  : L". It could not be kept aside: " + result.Text();
}

bool IsOfNewerVersion(const std::string& bytes) {
    JobListVersion list;
    std::wstring problem;
    return json::Read(bytes, list, problem) && list.version > newestVersion;
}

/// Applies the journal of a snapshot.
bool ApplyJournal(const std::wstring& path, JobList& list, std::wstring& problem) {
    const std::wstring journal = job_list_journal::PathOf(path);
    return list.snapshotId.empty() ||
           job_list_journal::Apply(journal, list.snapshotId, list.rows, problem) != job_list_journal::Found::Damaged;
}

/// The result of reading the job list file: a valid list, no file, an invalid list, or a file that must be left alone.
enum class Found { List, Nothing, NoList, Unusable };

Found LookAt(const std::wstring& path, std::string& bytes, JobList& list, std::wstring& problem) {
    if (const Error result = platform::ReadFileRetrying(path, json::largestText, bytes); !result) {
        problem = platform::ToNativeText(path) + L": " + result.Text();
        const bool isNoFile = result.kind == ErrorKind::NotSupported;
        return result.kind == ErrorKind::NotFound ? Found::Nothing : isNoFile ? Found::NoList : Found::Unusable;
    }
    if (!json::Read(bytes, list, problem)) {
        problem = json::ProblemInFile(path, problem);
        return IsOfNewerVersion(bytes) ? Found::Unusable : Found::NoList;
    }
    return ApplyJournal(path, list, problem) ? Found::List : Found::NoList;
}

/// As `LookAt`, while the writer of the list may replace it: a journal that is read behind the snapshot may already
/// continue the next one. `stamp` is the state of the file that was read.
Found LookAtStable(const std::wstring& path, std::string& bytes, JobList& list, std::wstring& problem,
                   std::optional<platform::FileStamp>& stamp) {
    constexpr int mostLooks = 100;
    Found found = Found::Nothing;
    for (int look = 0; look < mostLooks; ++look) {
        stamp = platform::StampOf(path);
        list = {};
        found = LookAt(path, bytes, list, problem);
        if (list.snapshotId.empty() || platform::StampOf(path) == stamp) {
            break;
        }
    }
    return found;
}

/// Replaces `path` and keeps the old version as `keptAs`. If `path` is a file, it exists at every moment.
Error ReplaceKeeping(const std::wstring& path, std::string_view bytes, const std::wstring& keptAs) {
    if (!platform::IsDirectory(path)) {
        return platform::ReplaceFileKeepingBackup(path, bytes, keptAs);
    }
    const Error result = platform::RenameFile(path, keptAs);
    return result ? platform::ReplaceFile(path, bytes) : result;
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
    // A damaged journal is kept with its snapshot. Usually there is none.
    (void)platform::RenameFile(job_list_journal::PathOf(path), corrupt + L".journal");
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
    std::optional<platform::FileStamp> stamp;
    std::string bytes;
    std::wstring problem;
    switch (LookAtStable(path, bytes, list, problem, stamp)) {
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
    const Error result = ReplaceKeeping(path, bytes, name);
    if (result) {
        ControllerCSWrapper::WriteWarnLog(
            L"The job list has been changed by another program" +
            (isList ? L": " + platform::ToNativeText(path) : L" and cannot be read: " + problem) +
            KeptAs(result, name));
    }
    return result;
}

Error Replace(const std::wstring& path, std::string_view bytes) {
    const auto stamp = platform::StampOf(path);
    const bool isForeign = stamp && stamp != TheState().knownGood;
    return isForeign ? ReplaceExternalEdit(path, bytes)
                     : platform::ReplaceFileKeepingBackup(path, bytes, BackupOf(path));
}

void NoteSuccess(State& state, const std::wstring& path) {
    state.knownGood = platform::StampOf(path);
    if (const int attempts = std::exchange(state.failedWrites, 0)) {
        ControllerCSWrapper::WriteWarnLog(L"The job list " + platform::ToNativeText(path) +
                                          L" is written again, after failed attempts: " + std::to_wstring(attempts));
    }
}

void NoteFailure(State& state, const std::wstring& path, const Error& error) {
    if (state.failedWrites++ == 0) {
        ControllerCSWrapper::WriteWarnLog(L"The job list cannot be written: " + platform::ToNativeText(path) + L": " +
                                          error.Text() +
                                          L". Jobs go on; until it can be written, a restart loses changes");
    }
}

/// Without a journal, produces the same bytes as `ControllerCSWrapper::Serialize` for the message "JobList".
std::string ListText(std::size_t count, const std::function<Row()>& next, const std::wstring& snapshotId) {
    constexpr std::size_t sample = 32;
    std::string bytes = snapshotId.empty()
                            ? R"({"JobList":[)"
                            : R"({"version":2,"snapshotId":")" + text::ToUtf8(snapshotId) + R"(","JobList":[)";
    std::wstring row;
    std::string rowBytes;
    std::size_t written = 0;
    for (Row listed = next(); listed.info != nullptr; listed = next()) {
        if (written++ == sample) {
            bytes.reserve(bytes.size() / sample * count * 17 / 16);
        }
        row.assign(written > 1 ? L"," : L"");
        Append(listed, row);
        std::size_t badAt = 0;
        // Serialized JSON contains only valid characters.
        (void)text::EncodeUtf8(row, rowBytes, badAt);
        bytes += rowBytes;
    }
    return bytes + "]}";
}

} // namespace

bool Read(const std::wstring& path, std::vector<JobListInfo>& records) {
    const std::scoped_lock lock(TheState().mutex);
    JobList list;
    if (!ReadOrRestore(path, list)) {
        return false;
    }
    records.reserve(list.rows.size());
    for (ListedJob& row : list.rows) {
        records.push_back(std::move(static_cast<JobListInfo&>(row)));
    }
    return true;
}

bool ReadRows(const std::wstring& path, std::vector<ListedJob>& rows) {
    return boundary::Guard("ReadRows", [&] {
        const std::scoped_lock lock(TheState().mutex);
        JobList list;
        const bool isRead = ReadOrRestore(path, list);
        rows = std::move(list.rows);
        return isRead;
    });
}

void Append(const Row& row, std::wstring& json) {
    json += L'{';
    json::AppendMembers(*row.info, json);
    if (row.queue != nullptr) {
        json::AppendMembers(*row.queue, json);
    }
    json += L'}';
}

void RemoveLeftovers(const std::wstring& path) {
    for (const std::wstring& target : {path, BackupOf(path), ReplacedOf(path), job_list_journal::PathOf(path)}) {
        platform::RemoveStaleTemporaries(target);
    }
}

bool CheckUsable(const std::wstring& path, std::wstring& problem) {
    problem = L"it cannot be checked; the log says why";
    return boundary::Guard("CheckUsable", [&] {
        std::string bytes;
        JobList list;
        return LookAt(path, bytes, list, problem) != Found::Unusable;
    });
}

std::vector<std::wstring> KeptAside(const std::wstring& path) {
    return boundary::Guard("KeptAside", [&] {
        const std::wstring directory = platform::ParentDirectory(path);
        const std::wstring prefix = platform::FileName(CorruptPrefix(path));
        std::vector<std::wstring> files;
        std::vector<platform::DirectoryEntry> entries;
        if (platform::ListDirectory(directory, entries)) {
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
    State& state = TheState();
    const std::scoped_lock lock(state.mutex);
    const Error result = Replace(path, bytes);
    if (!result) {
        NoteFailure(state, path, result);
    } else {
        NoteSuccess(state, path);
    }
    return static_cast<bool>(result);
}

bool WriteRows(const std::wstring& path, std::size_t count, const std::function<Row()>& next,
               const std::wstring& snapshotId) {
    return boundary::Guard("WriteRows", [&] { return Write(path, ListText(count, next, snapshotId)); });
}

bool IsUnwritten() {
    const std::scoped_lock lock(TheState().mutex);
    return TheState().failedWrites > 0;
}

bool IsUnchanged(const std::wstring& path) {
    const std::scoped_lock lock(TheState().mutex);
    const auto stamp = platform::StampOf(path);
    return stamp && stamp == TheState().knownGood;
}

} // namespace job_list_file
