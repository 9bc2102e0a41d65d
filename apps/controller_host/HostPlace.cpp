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
    if (const platform::Error error =
            platform::EnsurePrivateDirectories(platform::ParentDirectory(settings.jobListFile))) {
        return error;
    }
    const std::wstring lockFile = host_lock::FileFor(settings.jobListFile);
    const auto deadline = steady_clock::now() + timeout;
    platform::Error error = lock.Take(lockFile);
    while (error.kind == platform::ErrorKind::InUse && MayOtherHostBecomeReady(settings) &&
           steady_clock::now() < deadline) {
        platform::SleepFor(interval);
        error = lock.Take(lockFile);
    }
    if (!error) {
        holder = host_lock::OwnHolder();
        holder.settingsFile = settings.file;
        holder.jobListFile = settings.jobListFile;
        holder.eventTransmitter = settings.eventTransmitter;
        holder.transmitterName = settings.transmitterName;
        Write();
        Note();
    }
    return error;
}

void HostPlace::SetReady() {
    holder.isReady = true;
    holder.place = DescribeEventTransmitter(holder.eventTransmitter, L"engine:" + holder.transmitterName).place;
    Write();
}

/// Without this record, the host is found only by its settings.
void HostPlace::Note() {
    if (const platform::Error error = host_records::Write(holder)) {
        ControllerLogManager::WarnLog(L"The host cannot note in the user's data folder which settings it has: " +
                                      error.Text());
    }
}

/// On a full disk the file does not name the holder; the lock is held in any case.
void HostPlace::Write() {
    if (const platform::Error error = lock.Write(host_lock::Serialize(holder))) {
        ControllerLogManager::WarnLog(L"The lock of the job list cannot say which process holds it: " + error.Text());
    }
}
