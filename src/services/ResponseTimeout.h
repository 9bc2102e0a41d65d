#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "CommonControllerLib/Export.h"

/// How long an answer of the host may take.
namespace response_patience {

/// As the text of the variable below says: whole seconds, 20 where it is not set; text without a number, and less than
/// nothing, is no time at all; at most a day.
CONTROLLER_API std::chrono::seconds From(const std::optional<std::wstring>& variable);

/// As the environment variable QRV_KT_WAIT_RESPONSE_SEC of this process says. Any thread, while none sets variables.
CONTROLLER_API std::chrono::seconds FromEnvironment();

} // namespace response_patience
