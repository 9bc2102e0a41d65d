#include "controller_host/HostPlace.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "controller_host/OtherHost.h"
#include "formats/HostRecords.h"
#include "modules/EventTransmitterDescription.h"
#include "platform/files/Directory.h"
#include "platform/files/NativePath.h"
#include "platform/system/Sleep.h"

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds interval{20};

} // namespace

HostPlace::~HostPlace() {
    if (lock.IsHeld()) {
        host_records::Remove(holder);
    }
    lock.Remove();
}

platform::Error HostPlace::Take(const settings::Settings& settings, std::chrono::milliseconds timeout) {
    if (const platform::Error result =
            platform::EnsurePrivateDirectories(platform::ParentDirectory(settings.jobListFile));
        !result) {
        return result;
    }
    const std::wstring lockFile = host_lock::FileFor(settings.jobListFile);
    const auto deadline = steady_clock::now() + timeout;
    platform::Error result = lock.Take(lockFile);
    while (result.kind == platform::ErrorKind::InUse && MayOtherHostBecomeReady(settings) &&
           steady_clock::now() < deadline) {
        platform::SleepFor(interval);
        result = lock.Take(lockFile);
    }
    if (result) {
        holder = host_lock::OwnHolder();
        holder.settingsFile = settings.file;
        holder.jobListFile = settings.jobListFile;
        holder.eventTransmitter = settings.eventTransmitter;
        holder.transmitterName = settings.transmitterName;
        Write();
        Note();
    }
    return result;
}

void HostPlace::SetReady() {
    holder.isReady = true;
    holder.place = DescribeEventTransmitter(holder.eventTransmitter, L"engine:" + holder.transmitterName).place;
    Write();
}

/// Without this record, the host is found only by its settings.
void HostPlace::Note() {
    if (const platform::Error result = host_records::Write(holder); !result) {
        ControllerLogManager::WarnLog(L"The host cannot note in the user's data folder which settings it has: " +
                                      result.Text());
    }
}

/// On a full disk the file does not name the holder; the lock is held in any case.
void HostPlace::Write() {
    if (const platform::Error result = lock.Write(host_lock::Serialize(holder)); !result) {
        ControllerLogManager::WarnLog(L"The lock of the job list cannot say which process holds it: " + result.Text());
    }
}
