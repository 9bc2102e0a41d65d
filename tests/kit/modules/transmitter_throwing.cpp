#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/Export.h"

#include <stdexcept>
#include <string>

extern "C" CONTROLLER_API EventTransmitter* GetEventTransmitter(const std::wstring&) {
    throw std::runtime_error("no transmitter today");
}
