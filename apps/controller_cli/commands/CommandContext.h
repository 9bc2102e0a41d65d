#pragma once

#include "controller_cli/connection/HostAccess.h"
#include "controller_cli/output/Texts.h"
#include "controller_cli/terminal/Console.h"

#include <chrono>
#include <cstdint>
#include <functional>

namespace controller_cli {

/// The environment of a command. All members outlive the command.
struct CommandContext {
    Console& console;
    const Texts& texts;
    HostAccess& host;
    /// Signalled when the user wants this program to end; null: never.
    void* stop = nullptr;
    /// Response timeout of the host.
    std::chrono::milliseconds patience;
    /// Current time in seconds since 1970.
    std::function<std::int64_t()> now;
};

} // namespace controller_cli
