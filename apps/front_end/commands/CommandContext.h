#pragma once

#include "front_end/connection/HostAccess.h"
#include "front_end/output/Texts.h"
#include "front_end/terminal/Console.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace front_end {

/// The environment of a command. All members outlive the command.
struct CommandContext {
    Console& console;
    const Texts& texts;
    HostAccess& host;
    /// Signalled when the user wants this program to end; null: never.
    void* stop = nullptr;
    /// Response timeout of the host.
    std::chrono::milliseconds timeout;
    /// Current time in seconds since 1970.
    std::function<std::int64_t()> now;
    /// The name of this program, for its messages.
    std::wstring program;
};

} // namespace front_end
