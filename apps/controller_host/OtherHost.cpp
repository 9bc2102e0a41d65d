#include "controller_host/OtherHost.h"

#include <chrono>

#include "companion/HostLock.h"
#include "modules/EventTransmitter.h"
#include "modules/EventTransmitterManager.h"
#include "platform/NativePath.h"
#include "platform/Waiting.h"

namespace {

using std::chrono::steady_clock;

/// Nothing tells that a host of somebody else's has become ready.
constexpr std::chrono::milliseconds lookInterval{50};
/// As long as the start of a host may take.
constexpr std::chrono::seconds startLimit{30};
/// A host that is ready looks each second whether its socket is still there.
constexpr std::chrono::seconds socketLimit{3};

bool ListensForThese(const settings::Settings& settings, const host_lock::Holder& holder) {
    return holder.process == 0 || (holder.transmitterName == settings.transmitterName &&
                                   platform::SameName(holder.eventTransmitter, settings.eventTransmitter));
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

bool ReachOtherHost(const settings::Settings& settings) {
    const auto begin = steady_clock::now();
    host_lock::Holder holder;
    while (host_lock::FindHolder(settings.jobListFile, holder) && ListensForThese(settings, holder)) {
        EventTransmitterManager modules(settings.eventTransmitter);
        EventTransmitter* const transmitter = modules.GetEventTransmitter(L"client:" + settings.transmitterName);
        // An event that no host knows: sending makes the connection where there is none.
        if (transmitter != nullptr && transmitter->SendEvent(L"LookForHost", {})) {
            return true;
        }
        if (steady_clock::now() - begin > (holder.isReady ? socketLimit : startLimit)) {
            return false;
        }
        platform::WaitForAny({}, lookInterval);
    }
    return false;
}
