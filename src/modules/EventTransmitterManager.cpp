#include "CommonControllerLib/EventTransmitterManager.h"

#include "controller_plugins/EventTransmitterExtension.h"
#include "platform/system/SharedLibrary.h"

#include <cstdint>

namespace {

using GetEventTransmitterExport = EventTransmitter* (*)(const std::wstring&);
using GetExtensionExport = EventTransmitterExtension* (*)(const std::wstring&, std::uint32_t);

} // namespace

EventTransmitterManager::EventTransmitterManager(const std::wstring& modulePath)
    : module(platform::LoadModule(modulePath)) {}

EventTransmitter* EventTransmitterManager::GetEventTransmitter(const std::wstring& transmitterId) {
    const auto getEventTransmitter =
        reinterpret_cast<GetEventTransmitterExport>(platform::FindExport(module, "GetEventTransmitter"));
    return getEventTransmitter == nullptr ? nullptr : getEventTransmitter(transmitterId);
}

EventTransmitterExtension* EventTransmitterManager::GetExtension(const std::wstring& transmitterId) {
    const auto getExtension =
        reinterpret_cast<GetExtensionExport>(platform::FindExport(module, "GetEventTransmitterExtension"));
    return getExtension == nullptr ? nullptr : getExtension(transmitterId, EventTransmitterExtension::version);
}
