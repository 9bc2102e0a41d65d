#pragma once

#include <string>

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"

/// Asks the real module, loaded on first use, for a transmitter. Its sockets stand where `NewEndpointName` says.
EventTransmitter* TransmitterFromModule(const std::wstring& id);
/// Its extension.
EventTransmitterExtension* ExtensionFromModule(const std::wstring& id);
