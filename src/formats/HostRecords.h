#pragma once

#include "CommonControllerLib/Export.h"
#include "formats/HostLock.h"
#include "platform/system/Error.h"

#include <string>
#include <vector>

/// What each running host notes of itself in the user's data directory: which job list it serves and which settings
/// file it was started with. So a host is found whose settings file cannot be read any more. The lock of the job list,
/// not the note, says whether a host runs. Any thread.
namespace host_records {

/// Writes the note of this process's host, and removes those of hosts that were killed. Without a data directory of the
/// user there is no note.
[[nodiscard]] CONTROLLER_API platform::Error Write(const host_lock::Holder& holder);

/// Removes it.
CONTROLLER_API void Remove(const host_lock::Holder& holder);

/// The hosts that run and were started with this settings file, as their locks describe them.
CONTROLLER_API std::vector<host_lock::Holder> StartedWith(const std::wstring& settingsFile);

} // namespace host_records
