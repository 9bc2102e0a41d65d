#include "system/soak/FrontEndCrowd.h"

#include "kit/OtherProcesses.h"
#include "kit/TestProcess.h"
#include "text/Text.h"

#include <utility>

namespace {

constexpr std::size_t mostMembers = 8;
/// 0: done; 1: a job did not succeed; 2: a named object does not exist (any more).
constexpr std::int32_t worstUsualExit = 2;

} // namespace

void FrontEndCrowd::Start(const platform::ProcessStart& start) {
    TakeNotice();
    if (members.size() >= mostMembers) {
        return;
    }
    platform::OwnedHandle process;
    if (const platform::Error result = platform::StartProcess(start, process); !result) {
        problems.push_back("A front end cannot be started: " + text::ToUtf8(result.Text()));
        return;
    }
    ++started;
    members.push_back({start.arguments.front(), std::move(process)});
}

bool FrontEndCrowd::KillOne(std::mt19937& random) {
    TakeNotice();
    if (members.empty()) {
        return false;
    }
    const auto victim = members.begin() + static_cast<std::ptrdiff_t>(random() % members.size());
    test_support::KillProcess(victim->process.Get());
    if (!test_support::WaitUntilSignalled(victim->process.Get())) {
        problems.push_back("The front end " + text::ToUtf8(victim->command) + " does not end by force");
    }
    members.erase(victim);
    ++killed;
    return true;
}

void FrontEndCrowd::EndAll() {
    std::mt19937 anyOrder;
    while (KillOne(anyOrder)) {
    }
}

void FrontEndCrowd::TakeNotice() {
    std::erase_if(members, [this](const Member& member) {
        const auto exitCode = platform::ExitCode(member.process.Get());
        if (exitCode.value_or(0) < 0 || exitCode.value_or(0) > worstUsualExit) {
            problems.push_back("The front end " + text::ToUtf8(member.command) + " has ended with " +
                               text::ToUtf8(platform::ExitCodeText(*exitCode)));
        }
        return exitCode.has_value();
    });
}
