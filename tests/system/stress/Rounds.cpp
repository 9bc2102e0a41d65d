#include "system/stress/Rounds.h"

#include "platform/system/Environment.h"

#include <string>

namespace {

std::chrono::seconds WantedTime() {
    const auto text = platform::GetEnvironment(L"CONTROLLER_STRESS_SECONDS");
    return std::chrono::seconds(text ? std::stoi(*text) : 0);
}

} // namespace

Rounds::Rounds() : end(std::chrono::steady_clock::now() + WantedTime()) {}

bool Rounds::Next() {
    const bool wanted = number == 0 || std::chrono::steady_clock::now() < end;
    number += wanted ? 1 : 0;
    return wanted;
}
