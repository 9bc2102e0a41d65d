#pragma once

#include "CommonControllerLib/Export.h"
#include "formats/JobListFile.h"
#include "formats/Scheduling.h"
#include "platform/files/File.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The journal of a job list: the changes since the snapshot in the list's file. Each line is the CRC-32 of its JSON in
/// eight hexadecimal digits, a blank, the JSON, and a line feed. The first line names the snapshot that the journal
/// continues; a journal of another snapshot is stale and has no effect. Each further line is one change, which is
/// applied as a whole or not at all.
namespace job_list_journal {

/// Returns the path of the journal of the list at `listPath`.
CONTROLLER_API std::wstring PathOf(const std::wstring& listPath);

/// Rows of the list, not owned. Each has a record.
using Rows = std::vector<job_list_file::Row>;

/// What `Apply` found.
enum class Found {
    /// All changes are applied. A torn last line, written when the process or the machine stopped, is ignored.
    Changes,
    /// There is no journal, or it continues another snapshot.
    Nothing,
    /// A line other than the last one is damaged, or the file cannot be read; the rows are then incomplete.
    Damaged
};

/// Applies the journal at `path` to `rows`, the rows of the snapshot `snapshotId`. On `Damaged` sets `problem`,
/// which names file and line.
[[nodiscard]] Found Apply(const std::wstring& path, const std::wstring& snapshotId, std::vector<ListedJob>& rows,
                          std::wstring& problem);

/// An open journal. Not thread-safe.
class Journal {
public:
    /// Replaces the file by an empty journal of the snapshot, durably.
    [[nodiscard]] CONTROLLER_API platform::Error Begin(const std::wstring& path, const std::wstring& snapshotId);
    /// Appends one change: the rows that are new or have new values, and the ids of deleted rows. It survives the end
    /// of this process, and a power failure after `Flush`. Fails also if the file was changed, moved or removed by
    /// others. After a failure the last line may be torn: write a snapshot and begin a new journal.
    [[nodiscard]] CONTROLLER_API platform::Error Append(const Rows& changed, const std::vector<std::wstring>& deleted);
    /// Blocks until all changes are on the disk. Without a change since the last call does nothing.
    [[nodiscard]] CONTROLLER_API platform::Error Flush();
    /// Closes the file, which stays.
    void Close() { file.Close(); }
    /// Closes the journal and removes the file at `path`, after a snapshot that has no journal.
    CONTROLLER_API void End(const std::wstring& path);

    bool IsOpen() const { return file.IsOpen(); }
    /// Units: bytes.
    std::uint64_t Size() const { return size; }

private:
    std::wstring path;
    platform::File file;
    std::uint64_t size = 0;
    bool isFlushed = true;
};

} // namespace job_list_journal
