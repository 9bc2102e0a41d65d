#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Error.h"
#include "records/JobRecords.h"

/// The job list on disk. Whatever happens to the file, no list is lost: what stands in its place is kept as ".bak" when
/// it is good and as ".corrupt-<time>" when it is not. A file that is missing was deleted by somebody, so there is no
/// list then, and its backup is left alone. Any thread.
namespace job_list_file {

/// Reads the list into the empty `records`, from the backup where the file is not usable. What is wrong goes to the
/// log.
bool Read(const std::wstring& path, std::vector<JobListInfo>& records);

/// Replaces the list by `bytes`, all or nothing.
platform::Error Write(const std::wstring& path, std::string_view bytes);

} // namespace job_list_file
