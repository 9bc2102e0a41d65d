#pragma once

#include <chrono>
#include <string>

#include "formats/HostLock.h"
#include "platform/files/FileLock.h"
#include "platform/system/Error.h"
#include "services/Settings.h"

/// The lock that makes this process the one host of its job list. Its file says which process has it, since when and
/// where front ends reach it; it goes with the lock, and so does a note for those who cannot read the settings.
class HostPlace {
public:
    HostPlace() = default;
    ~HostPlace();
    HostPlace(const HostPlace&) = delete;
    HostPlace& operator=(const HostPlace&) = delete;

    /// Takes the lock. While another process has it that is becoming the host for the same front ends and cannot be
    /// reached yet, waits for one or the other up to `patience`: so whoever starts a host beside one that is starting
    /// comes back when that one is ready, or takes its place when it ends. `InUse`: another host has the place.
    platform::Error Take(const settings::Settings& settings, std::chrono::milliseconds patience);

    /// Writes into the lock file where front ends can reach the host from now on.
    void SetReady();

private:
    void Write();
    void Note();

    platform::FileLock lock;
    host_lock::Holder holder;
};
