#include "local_socket/support/Module.h"

#include <stdexcept>

#include "platform/Directories.h"
#include "platform/SharedLibrary.h"

namespace {

using GetEventTransmitter = EventTransmitter* (*)(const std::wstring&);

GetEventTransmitter LoadExport() {
    void* const module = platform::LoadModule(platform::ProgramFolder() + L"\\" LOCAL_SOCKET_MODULE);
    if (module == nullptr) {
        throw std::runtime_error("the module cannot be loaded");
    }
    return reinterpret_cast<GetEventTransmitter>(platform::FindExport(module, "GetEventTransmitter"));
}

} // namespace

EventTransmitter* TransmitterFromModule(const std::wstring& id) {
    static const GetEventTransmitter getEventTransmitter = LoadExport();
    return getEventTransmitter(id);
}
