#include "cli/CLIOrvelProxy.h"
#include "cli/ResponseFlags.h"
#include "platform/Environment.h"
#include "platform/Sleep.h"
#include "support/Numbers.h"

#include <atomic>
#include <chrono>
#include <cstdint>

std::atomic<bool> response_flags::responseStarted = false;
std::atomic<bool> response_flags::responseFinished = false;

namespace {

constexpr std::chrono::milliseconds tick(100);

/// Negative: not read yet.
std::int32_t waitResponseSeconds = -1;

std::int32_t ReadWaitSeconds() {
    constexpr std::int32_t defaultSeconds = 20;
    const auto value = platform::GetEnvironment(L"QRV_KT_WAIT_RESPONSE_SEC");
    return value ? numbers::ReadInteger(*value) : defaultSeconds;
}

/// Ten ticks a second. Multiplied in 32 bits, unsigned: a huge value wraps round.
std::int32_t TicksOf(std::int32_t seconds) {
    const std::uint32_t milliseconds = static_cast<std::uint32_t>(seconds) * 1000U;
    return static_cast<std::int32_t>(milliseconds) / static_cast<std::int32_t>(tick.count());
}

void WaitFor(const std::atomic<bool>& flag, std::int32_t& ticks) {
    while (!flag) {
        --ticks;
        if (ticks < 1) {
            return;
        }
        platform::SleepFor(tick);
    }
}

} // namespace

void WaitForResponse() {
    if (waitResponseSeconds < 0) {
        waitResponseSeconds = ReadWaitSeconds();
    }
    std::int32_t ticks = TicksOf(waitResponseSeconds);
    WaitFor(response_flags::responseStarted, ticks);
    WaitFor(response_flags::responseFinished, ticks);
}
