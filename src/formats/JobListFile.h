#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"

/// The job list on disk. Whatever happens to the file, no list is lost; beside it stand
/// - ".bak": the list before the last write,
/// - ".corrupt-<time>": what stood in its place and was no list,
/// - ".replaced": the last list that stood there without this process having written or read it.
/// A file that is missing was deleted by somebody, so there is no list then, and its backup is left alone. Any thread.
namespace job_list_file {

/// Reads the list into the empty `records`. What is no list is kept aside and the backup takes its place, so that
/// reading again gives the same. A list that cannot be opened, or that is of a newer version, is left as it stands:
/// false. What is wrong goes to the log.
[[nodiscard]] bool Read(const std::wstring& path, std::vector<JobListInfo>& records);

/// Removes what a process left beside the list that was killed while it wrote it. Only for the one who may write it.
CONTROLLER_API void RemoveLeftovers(const std::wstring& path);

/// Why the file at `path` cannot be used although it may be a good list: it cannot be opened, or a newer program wrote
/// it. Empty when nothing is in the way. For a program that would rather not start than begin with an empty list.
CONTROLLER_API std::wstring ReasonUnusable(const std::wstring& path);

/// The files beside the list that stood in its place and could not be read (".corrupt-<time>"), oldest first. As long
/// as somebody leaves them there, jobs may be missing from the list: for a program that says so.
CONTROLLER_API std::vector<std::wstring> KeptAside(const std::wstring& path);

/// Replaces the list by `bytes`, all or nothing. The first failure of a row is a warning in the log, and so is its end;
/// the bytes are kept for `RetryWrite`.
[[nodiscard]] bool Write(const std::wstring& path, std::string_view bytes);

/// As `Write`, of `count` rows that `next` gives one after another and then null. Only one row at a time stands in wide
/// text, so that a long list costs little more than its bytes.
[[nodiscard]] CONTROLLER_API bool WriteRows(const std::wstring& path, std::size_t count,
                                            const std::function<const JobListInfo*()>& next);

/// True while the last list that was to be written is not.
CONTROLLER_API bool IsUnwritten();

/// Tries once more to write it.
CONTROLLER_API void RetryWrite();

} // namespace job_list_file
