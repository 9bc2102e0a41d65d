#pragma once

#include <string>

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"

/// Requests a transmitter from the real module, loaded on first use. Its sockets are where `NewEndpointName` says.
EventTransmitter* TransmitterFromModule(const std::wstring& id);
/// Its extension.
EventTransmitterExtension* ExtensionFromModule(const std::wstring& id);
