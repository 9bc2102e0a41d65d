#include "modules/EventTransmitterManager.h"

#include "platform/SharedLibrary.h"

namespace {

using GetEventTransmitterExport = EventTransmitter* (*)(const std::wstring&);

} // namespace

EventTransmitterManager::EventTransmitterManager(const std::wstring& modulePath)
    : module(platform::LoadModule(modulePath)) {}

EventTransmitter* EventTransmitterManager::GetEventTransmitter(const std::wstring& transmitterId) {
    const auto getEventTransmitter =
        reinterpret_cast<GetEventTransmitterExport>(platform::FindExport(module, "GetEventTransmitter"));
    return getEventTransmitter == nullptr ? nullptr : getEventTransmitter(transmitterId);
}
