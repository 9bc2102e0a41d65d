#include "CommonControllerLib/Export.h"
#include "platform/system/NeverDestroyed.h"
#include "transport/in_process/Bus.h"
#include "transport/in_process/TransmitterId.h"

#include <cstdint>
#include <exception>
#include <map>
#include <mutex>

namespace in_process {
namespace {

/// Returns the bus of this name, created on first use. It lives until the process ends.
Bus& BusNamed(const std::wstring& name) {
    // Never destroyed: its threads may still run while the process ends.
    static std::mutex& mutex = platform::MakeNeverDestroyed<std::mutex>();
    static auto& buses = platform::MakeNeverDestroyed<std::map<std::wstring, Bus>>();
    const std::lock_guard lock(mutex);
    return buses[name];
}

/// Returns null if the id is invalid or the system has no thread left.
Endpoint* FindEndpoint(const std::wstring& transmitterId) {
    try {
        const auto id = ParseTransmitterId(transmitterId);
        if (!id) {
            return nullptr;
        }
        Bus& bus = BusNamed(id->bus);
        return id->isServer ? bus.GetServer() : bus.GetClient(id->client);
    } catch (const std::exception&) {
        return nullptr;
    }
}

} // namespace
} // namespace in_process

/// Returns the transmitter for an id in the syntax of `ParseTransmitterId`; the same id yields the same object. Returns
/// null for any other id, and if the system has no thread left.
extern "C" CONTROLLER_API EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId) {
    return in_process::FindEndpoint(transmitterId);
}

extern "C" CONTROLLER_API EventTransmitterExtension* GetEventTransmitterExtension(const std::wstring& transmitterId,
                                                                                  std::uint32_t version) {
    return version == EventTransmitterExtension::version ? in_process::FindEndpoint(transmitterId) : nullptr;
}
