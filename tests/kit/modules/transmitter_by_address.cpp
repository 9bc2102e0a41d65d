#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/Export.h"

#include <cstdint>
#include <string>

/// Returns the test's own transmitter: the identifier is its address in decimal digits; null for any other text.
extern "C" CONTROLLER_API EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId) {
    if (transmitterId.empty() || transmitterId.find_first_not_of(L"0123456789") != std::wstring::npos) {
        return nullptr;
    }
    const std::uintptr_t address = std::stoull(transmitterId);
    return reinterpret_cast<EventTransmitter*>(address);
}
