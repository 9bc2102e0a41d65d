#pragma once

#include <chrono>
#include <string>

#include "formats/HostLock.h"
#include "platform/files/FileLock.h"
#include "platform/system/Error.h"
#include "services/Settings.h"

/// The lock that makes this process the only host of its job list. Its file contains the process, its start time and
/// its endpoint, and is removed with the lock. So is a record for programs that cannot read the settings.
class HostPlace {
public:
    HostPlace() = default;
    ~HostPlace();
    HostPlace(const HostPlace&) = delete;
    HostPlace& operator=(const HostPlace&) = delete;

    /// Takes the lock. If the holder is a host that is still starting and serves the same front ends, waits up to
    /// `timeout` until it is ready or has ended, and takes the lock in the latter case. Fails with `InUse` if another
    /// host holds the lock.
    platform::Error Take(const settings::Settings& settings, std::chrono::milliseconds timeout);

    /// Writes the endpoint at which front ends can now connect into the lock file.
    void SetReady();

private:
    void Write();
    void Note();

    platform::FileLock lock;
    host_lock::Holder holder;
};
