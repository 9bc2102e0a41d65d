/// Replaces the product's definition, which does nothing: ends the process at the fault in the file. The file is read
/// each time, so that a test can arm a running host.

#include "platform/files/FileSystem.h"
#include "platform/system/Environment.h"
#include "system/crash/EndOwnProcess.h"
#include "system/crash/Fault.h"

#include <atomic>

namespace {

std::optional<crash::Fault> CurrentFault() {
    constexpr std::size_t longestText = 100;
    static const auto path = platform::GetEnvironment(crash::faultFileVariable);
    std::string text;
    if (!path || !platform::ReadFile(*path, longestText, text)) {
        return std::nullopt;
    }
    return crash::ParseFault(text);
}

} // namespace

void fault_points::ReachFaultPoint(FaultPoint point) {
    static std::atomic<int> passes{0};
    const auto fault = CurrentFault();
    if (fault && fault->point == point && ++passes >= fault->pass) {
        crash::EndOwnProcess();
    }
}
