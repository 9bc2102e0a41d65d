#pragma once

#include "CommonControllerLib/Export.h"
#include "platform/system/OwnedHandle.h"

#include <cstdint>
#include <string>

/// The lock of a job list, held by the only host of that list. The system binds the lock to the host's process; the
/// lock file identifies that process for people and for programs that cannot reach the host. Threads: any.
namespace host_lock {

/// The contents of a lock file, which describe the host that holds the lock. Paths in the library's format.
struct Holder {
    /// The process id; 0 if unknown.
    std::int64_t process = 0;
    /// The start time of the process, in a unit of the system. No later process has the same id and start time.
    std::int64_t processStart = 0;
    /// When the host took the lock. Units: seconds since 1970, UTC.
    std::int64_t since = 0;
    /// The settings file that the host was started with; empty for the built-in settings.
    std::wstring settingsFile;
    std::wstring jobListFile;
    std::wstring eventTransmitter;
    std::wstring transmitterName;
    /// The endpoint as the transmitter module describes it; empty until front ends can connect, or if the module does
    /// not provide it.
    std::wstring place;
    bool isReady = false;

    bool operator==(const Holder&) const = default;
};

/// Returns the path of the lock file, beside the job list: two hosts must never write the same list.
CONTROLLER_API std::wstring FileFor(const std::wstring& jobListFile);

/// Returns the description of this process, with the current time as the time of the lock.
CONTROLLER_API Holder OwnHolder();

/// Returns the text of a lock file in UTF-8.
CONTROLLER_API std::string Serialize(const Holder& holder);

/// Reads a lock file. Returns a holder with the process id 0 if the file cannot be read or describes a process that has
/// ended.
CONTROLLER_API Holder ReadHolder(const std::wstring& file);

/// Finds the current holder of the lock of this job list. Returns false if the lock is free. If the holder cannot be
/// identified (it has not yet written its file, it belongs to another user, or the file is damaged), its process id is
/// 0 and no other member is set.
CONTROLLER_API bool FindHolder(const std::wstring& jobListFile, Holder& holder);

/// Opens the holder's process, to wait for it or to ask it to end, after checking that it is the process that wrote the
/// file. Returns null if the process has ended or belongs to another user. The caller owns the handle.
CONTROLLER_API platform::OwnedHandle OpenHolder(const Holder& holder);

/// Formats the known members for people: "process 4711, since 2026-11-22 06:50:00 UTC, at
/// /run/user/1000/common_controller/default.socket". Returns an empty text if none is known.
CONTROLLER_API std::wstring Describe(const Holder& holder);

} // namespace host_lock
