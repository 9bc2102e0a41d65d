#include "kit/local_socket/Module.h"

#include <cstdint>
#include <stdexcept>

#include "platform/system/Environment.h"
#include "platform/system/SharedLibrary.h"

namespace {

using GetEventTransmitter = EventTransmitter* (*)(const std::wstring&);
using GetExtension = EventTransmitterExtension* (*)(const std::wstring&, std::uint32_t);

void* Export(const char* name) {
    static void* const module = platform::LoadModule(platform::ProgramDirectory() + L"\\" LOCAL_SOCKET_MODULE);
    if (module == nullptr) {
        throw std::runtime_error("the module cannot be loaded");
    }
    return platform::FindExport(module, name);
}

} // namespace

EventTransmitter* TransmitterFromModule(const std::wstring& id) {
    return reinterpret_cast<GetEventTransmitter>(Export("GetEventTransmitter"))(id);
}

EventTransmitterExtension* ExtensionFromModule(const std::wstring& id) {
    const auto getExtension = reinterpret_cast<GetExtension>(Export("GetEventTransmitterExtension"));
    return getExtension(id, EventTransmitterExtension::version);
}
