#include "in_process/Line.h"
#include "in_process/TransmitterId.h"
#include "platform/Export.h"

#include <exception>
#include <map>
#include <mutex>

namespace in_process {
namespace {

/// The line of this name; made when first asked for, stays for the life of the process.
Line& LineCalled(const std::wstring& name) {
    // Never destroyed: its threads may still run while the process ends.
    static std::mutex& mutex = *new std::mutex;
    static auto& lines = *new std::map<std::wstring, Line>;
    const std::lock_guard lock(mutex);
    return lines[name];
}

EventTransmitter* FindTransmitter(const TransmitterId& id) {
    Line& line = LineCalled(id.line);
    return id.isEngine ? line.Engine() : line.FrontEndCalled(id.frontEnd);
}

} // namespace
} // namespace in_process

/// The transmitter for an identifier as `ParseTransmitterId` reads it; the same identifier gives the same object. Null
/// for any other identifier, and when the system has no thread left.
extern "C" CONTROLLER_API EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId) {
    try {
        const auto id = in_process::ParseTransmitterId(transmitterId);
        return id ? in_process::FindTransmitter(*id) : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}
