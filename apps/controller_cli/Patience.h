#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace controller_cli {

/// How long an answer may take, as the environment variable QRV_KT_WAIT_RESPONSE_SEC says: whole seconds, 20 where it
/// is not set; text without a number, and less than nothing, is no time at all; at most a day.
std::chrono::seconds PatienceFrom(const std::optional<std::wstring>& variable);

} // namespace controller_cli
