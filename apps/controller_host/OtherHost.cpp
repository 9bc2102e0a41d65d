#include "controller_host/OtherHost.h"

#include <chrono>

#include "CommonControllerLib/EventTransmitterManager.h"
#include "controller_plugins/EventTransmitterExtension.h"
#include "formats/HostLock.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"

namespace {

using std::chrono::steady_clock;

/// Polling interval: a host of another process gives no notification when it is ready.
constexpr std::chrono::milliseconds lookInterval{50};
/// Timeout for the start of a host.
constexpr std::chrono::seconds startLimit{30};
/// A ready host checks every second that its socket still exists.
constexpr std::chrono::seconds socketLimit{3};

bool ListensForThese(const settings::Settings& settings, const host_lock::Holder& holder) {
    return holder.process == 0 || (holder.transmitterName == settings.transmitterName &&
                                   platform::SameName(holder.eventTransmitter, settings.eventTransmitter));
}

/// True if front ends reach a host, or get the reason themselves why they cannot. Also true if the module has no
/// extension.
bool IsServed(const settings::Settings& settings) {
    EventTransmitterManager modules(settings.eventTransmitter);
    EventTransmitterExtension* const frontEnd = modules.GetExtension(L"client:" + settings.transmitterName);
    std::wstring problem;
    return frontEnd == nullptr || frontEnd->Connect(problem) || !problem.empty();
}

} // namespace

std::wstring OtherHostProblem(const settings::Settings& settings) {
    std::wstring problem = L"another host is running for the job list " + platform::ToNativeText(settings.jobListFile);
    host_lock::Holder holder;
    if (host_lock::FindHolder(settings.jobListFile, holder) && holder.process != 0) {
        problem += L": " + host_lock::Describe(holder);
    }
    return problem;
}

bool MayOtherHostBecomeReady(const settings::Settings& settings) {
    host_lock::Holder holder;
    // Not held: the host has just ended, or has not written its file yet.
    const bool isHeld = host_lock::FindHolder(settings.jobListFile, holder);
    return (!isHeld || ListensForThese(settings, holder)) && !IsServed(settings);
}

bool ReachOtherHost(const settings::Settings& settings) {
    const auto begin = steady_clock::now();
    host_lock::Holder holder;
    while (host_lock::FindHolder(settings.jobListFile, holder) && ListensForThese(settings, holder)) {
        if (IsServed(settings)) {
            return true;
        }
        if (steady_clock::now() - begin > (holder.isReady ? socketLimit : startLimit)) {
            return false;
        }
        platform::WaitForAny({}, lookInterval);
    }
    return false;
}
