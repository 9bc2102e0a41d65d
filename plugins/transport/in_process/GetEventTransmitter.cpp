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

/// The line of this name; made when first asked for, stays for the life of the process.
Bus& BusNamed(const std::wstring& name) {
    // Never destroyed: its threads may still run while the process ends.
    static std::mutex& mutex = platform::MakeNeverDestroyed<std::mutex>();
    static auto& buses = platform::MakeNeverDestroyed<std::map<std::wstring, Bus>>();
    const std::lock_guard lock(mutex);
    return buses[name];
}

/// Null when the text names no end of a line, and when the system has no thread left.
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

/// The transmitter for an identifier as `ParseTransmitterId` reads it; the same identifier gives the same object. Null
/// for any other identifier, and when the system has no thread left.
extern "C" CONTROLLER_API EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId) {
    return in_process::FindEndpoint(transmitterId);
}

extern "C" CONTROLLER_API EventTransmitterExtension* GetEventTransmitterExtension(const std::wstring& transmitterId,
                                                                                  std::uint32_t version) {
    return version == EventTransmitterExtension::version ? in_process::FindEndpoint(transmitterId) : nullptr;
}
