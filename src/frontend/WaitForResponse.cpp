#include "CommonControllerLib/CLIOrvelProxy.h"
#include "frontend/ResponseFlags.h"
#include "platform/system/Environment.h"
#include "text/Numbers.h"

#include <chrono>
#include <cstdint>

namespace {

constexpr std::chrono::milliseconds tick(100);

/// Negative: not read yet.
std::int32_t waitResponseSeconds = -1;

std::int32_t ReadWaitSeconds() {
    constexpr std::int32_t defaultSeconds = 20;
    const auto value = platform::GetEnvironment(L"QRV_KT_WAIT_RESPONSE_SEC");
    return value ? numbers::ReadInteger(*value) : defaultSeconds;
}

/// Ten ticks per second. The unsigned 32-bit multiplication wraps round for huge values: required by the published
/// interface, held by WaitForResponseTest.AHugeValueWrapsRoundIn32Bits.
std::int32_t TicksOf(std::int32_t seconds) {
    const std::uint32_t milliseconds = static_cast<std::uint32_t>(seconds) * 1000U;
    return static_cast<std::int32_t>(milliseconds) / static_cast<std::int32_t>(tick.count());
}

/// Waits tick by tick; a tick ends early when the flag is set.
void WaitFor(const response_flags::ResponseFlag& flag, std::int32_t& ticks) {
    while (!flag) {
        --ticks;
        if (ticks < 1) {
            return;
        }
        flag.WaitFor(tick);
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
