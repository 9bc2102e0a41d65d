#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"
#include "formats/Scheduling.h"

/// The job list on disk. Its file is a snapshot; a program that keeps a journal (`job_list_journal`) names it in the
/// snapshot, which then has version 2, so that a program that does not know journals refuses it. No operation destroys
/// a list; these files are kept beside it:
///
/// - ".bak": the list before the last write,
/// - ".corrupt-<time>": an invalid file found in its place,
/// - ".replaced": the last valid list found there that this process had neither written nor read.
///
/// A missing file means that the user deleted the list: there are no jobs then, and the backup stays unused.
///
/// Threads: any.
namespace job_list_file {

/// Reads the list, snapshot and journal, into `records`, which must be empty. An invalid list is kept as
/// ".corrupt-<time>" and replaced by the backup, so that the next read gives the same result. Returns false if there is
/// no list. On failure logs the reason and returns false: neither list nor backup is valid, or the list cannot be
/// opened or has a newer version; in the last two cases the file is left unchanged.
[[nodiscard]] bool Read(const std::wstring& path, std::vector<JobListInfo>& records);
/// As `Read`, with what a host keeps of the jobs beside their records. Logs through `ControllerCSWrapper`.
[[nodiscard]] CONTROLLER_API bool ReadRows(const std::wstring& path, std::vector<ListedJob>& rows);

/// Removes temporary files of processes that were killed while they wrote the list. Call it only while holding the
/// right to write the list.
CONTROLLER_API void RemoveLeftovers(const std::wstring& path);

/// Returns false, and sets `problem`, if the file at `path` cannot be used although it may be a valid list: it cannot
/// be opened, or a newer program wrote it. A missing or damaged list is no problem. Used by programs that refuse to
/// start rather than begin with an empty list.
[[nodiscard]] CONTROLLER_API bool CheckUsable(const std::wstring& path, std::wstring& problem);

/// Returns the invalid lists that were kept (".corrupt-<time>"), oldest first. While they exist, jobs may be missing
/// from the list; programs use this to report it.
CONTROLLER_API std::vector<std::wstring> KeptAside(const std::wstring& path);

/// Replaces the list by `bytes` atomically. Returns false on failure. The first of several successive failures, and the
/// first success after them, are logged as warnings.
[[nodiscard]] bool Write(const std::wstring& path, std::string_view bytes);

/// A row to be written, not owned.
struct Row {
    // NOLINTNEXTLINE(google-explicit-constructor): a record alone is a row too.
    Row(const JobListInfo* record = nullptr, const QueueRecord* queueRecord = nullptr)
        : info(record), queue(queueRecord) {}

    /// Null: there is no row.
    const JobListInfo* info = nullptr;
    /// Null: nothing is kept beside the record.
    const QueueRecord* queue = nullptr;
};

/// Appends a row as JSON.
void Append(const Row& row, std::wstring& json);

/// Writes `count` rows as `Write` does; `next` returns them one after another, then none. Only one row at a time is
/// converted through wide text, so a long list needs little more memory than its bytes. `snapshotId` is the name that
/// the journal of this snapshot uses; empty if there is no journal.
[[nodiscard]] CONTROLLER_API bool WriteRows(const std::wstring& path, std::size_t count,
                                            const std::function<Row()>& next, const std::wstring& snapshotId = {});

/// Returns true if the last write failed.
CONTROLLER_API bool IsUnwritten();

/// Returns true if the list is the one that this process wrote or read last. False if it was changed, moved or removed.
CONTROLLER_API bool IsUnchanged(const std::wstring& path);

} // namespace job_list_file
