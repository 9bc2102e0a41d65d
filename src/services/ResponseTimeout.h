#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "CommonControllerLib/Export.h"

/// How long to wait for an answer of the host.
namespace response_timeout {

/// Parses the value of the variable named below: whole seconds, at most a day; 20 s if it is not set, 0 s for a
/// negative number or a text without a number.
CONTROLLER_API std::chrono::seconds From(const std::optional<std::wstring>& variable);

/// Reads the environment variable QRV_KT_WAIT_RESPONSE_SEC of this process. Threads: any, while no thread sets
/// environment variables.
CONTROLLER_API std::chrono::seconds FromEnvironment();

} // namespace response_timeout
