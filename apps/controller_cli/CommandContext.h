#pragma once

#include "controller_cli/Console.h"
#include "controller_cli/HostAccess.h"
#include "controller_cli/Texts.h"

#include <chrono>
#include <cstdint>
#include <functional>

namespace controller_cli {

/// What every command works with; all of it outlives the command.
struct CommandContext {
    Console& console;
    const Texts& texts;
    HostAccess& host;
    /// Signalled when the person at the terminal wants this program to end; null: never.
    void* stop = nullptr;
    /// How long an answer of the host may take.
    std::chrono::milliseconds patience;
    /// Seconds since 1970.
    std::function<std::int64_t()> now;
};

} // namespace controller_cli
