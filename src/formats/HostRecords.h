#pragma once

#include "CommonControllerLib/Export.h"
#include "formats/HostLock.h"
#include "platform/system/Error.h"

#include <string>
#include <vector>

/// Records of running hosts in the user's data directory: the job list that each serves and the settings file that it
/// was started with. With them a host can be found even if its settings file can no longer be read. The lock of the job
/// list, not the record, decides whether a host runs. Threads: any.
namespace host_records {

/// Writes the record of this process's host and removes the records of hosts that were killed. Does nothing if the user
/// has no data directory.
[[nodiscard]] CONTROLLER_API platform::Error Write(const host_lock::Holder& holder);

/// Removes the record of this host.
CONTROLLER_API void Remove(const host_lock::Holder& holder);

/// Returns the running hosts that were started with this settings file, as described by their locks.
CONTROLLER_API std::vector<host_lock::Holder> StartedWith(const std::wstring& settingsFile);

} // namespace host_records
