#include "modules/EventTransmitterDescription.h"

#include "platform/system/SharedLibrary.h"

namespace {

using DescribeExport = void (*)(const std::wstring&, std::wstring&, std::wstring&);

} // namespace

EventTransmitterDescription DescribeEventTransmitter(const std::wstring& modulePath,
                                                     const std::wstring& transmitterId) {
    EventTransmitterDescription description;
    void* const module = platform::LoadModule(modulePath);
    const auto describe = reinterpret_cast<DescribeExport>(platform::FindExport(module, "DescribeEventTransmitter"));
    if (describe != nullptr) {
        describe(transmitterId, description.place, description.problem);
    }
    return description;
}
