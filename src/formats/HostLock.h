#pragma once

#include "CommonControllerLib/Export.h"
#include "platform/processes/ProcessHandle.h"

#include <cstdint>
#include <string>

/// The lock of a job list, which the one host of that list holds. The system holds the lock with the host's process;
/// the file says who that is, for people and for programs that cannot reach the host. Any thread.
namespace host_lock {

/// What a lock file says of the host that holds it. Paths as the library has them.
struct Holder {
    /// The system's number of the process; 0: not known.
    std::int64_t process = 0;
    /// When the process began, in the system's own unit: no later process has both numbers.
    std::int64_t processStart = 0;
    /// Seconds since 1970: when it took the lock.
    std::int64_t since = 0;
    /// The settings that it was started with, empty: the built-in ones.
    std::wstring settingsFile;
    std::wstring jobListFile;
    std::wstring eventTransmitter;
    std::wstring transmitterName;
    /// Where front ends reach it, as the module says; empty until they can, and where the module does not say.
    std::wstring place;
    bool isReady = false;

    bool operator==(const Holder&) const = default;
};

/// It stands beside the job list: two hosts must never write one list.
CONTROLLER_API std::wstring FileFor(const std::wstring& jobListFile);

/// This process, as it takes a lock now.
CONTROLLER_API Holder OwnHolder();

/// The text of a lock file, UTF-8.
CONTROLLER_API std::string Serialize(const Holder& holder);

/// What a file says of a host that runs; one with the process 0 when it says nothing, or of a process that has ended.
CONTROLLER_API Holder ReadHolder(const std::wstring& file);

/// Who holds the lock of this job list now. False when nobody does. A holder that cannot be told (it has not written
/// its file yet, it is another user's, the file is damaged) has the process 0, and nothing else is set.
CONTROLLER_API bool FindHolder(const std::wstring& jobListFile, Holder& holder);

/// The holder's process, to wait for or to ask to end: checked to be that which wrote the file. Null when it has ended,
/// or is another user's. The caller owns it.
CONTROLLER_API platform::OwnedHandle OpenHolder(const Holder& holder);

/// "process 4711, since 2026-11-22 06:50:00 UTC, at /run/user/1000/common_controller/default.socket", with what is
/// known; empty when nothing is.
CONTROLLER_API std::wstring Describe(const Holder& holder);

} // namespace host_lock
