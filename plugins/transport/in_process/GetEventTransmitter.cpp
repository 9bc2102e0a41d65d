#include "CommonControllerLib/Export.h"
#include "platform/system/NeverDestroyed.h"
#include "transport/in_process/Line.h"
#include "transport/in_process/TransmitterId.h"

#include <cstdint>
#include <exception>
#include <map>
#include <mutex>

namespace in_process {
namespace {

/// The line of this name; made when first asked for, stays for the life of the process.
Line& LineCalled(const std::wstring& name) {
    // Never destroyed: its threads may still run while the process ends.
    static std::mutex& mutex = platform::MakeNeverDestroyed<std::mutex>();
    static auto& lines = platform::MakeNeverDestroyed<std::map<std::wstring, Line>>();
    const std::lock_guard lock(mutex);
    return lines[name];
}

/// Null when the text names no end of a line, and when the system has no thread left.
Endpoint* FindEnd(const std::wstring& transmitterId) {
    try {
        const auto id = ParseTransmitterId(transmitterId);
        if (!id) {
            return nullptr;
        }
        Line& line = LineCalled(id->line);
        return id->isEngine ? line.Engine() : line.FrontEndCalled(id->frontEnd);
    } catch (const std::exception&) {
        return nullptr;
    }
}

} // namespace
} // namespace in_process

/// The transmitter for an identifier as `ParseTransmitterId` reads it; the same identifier gives the same object. Null
/// for any other identifier, and when the system has no thread left.
extern "C" CONTROLLER_API EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId) {
    return in_process::FindEnd(transmitterId);
}

extern "C" CONTROLLER_API EventTransmitterExtension* GetEventTransmitterExtension(const std::wstring& transmitterId,
                                                                                  std::uint32_t version) {
    return version == EventTransmitterExtension::version ? in_process::FindEnd(transmitterId) : nullptr;
}
