#pragma once

#include "platform/processes/Process.h"

#include <random>
#include <string>
#include <vector>

/// Front ends as separate processes that start, run for a while and end, some of them killed.
class FrontEndCrowd {
public:
    /// Reaps ended front ends, and starts another if the limit allows.
    void Start(const platform::ProcessStart& start);
    /// Kills a running front end at any point of its work; false if there is none.
    [[nodiscard]] bool KillOne(std::mt19937& random);
    /// Ends all and waits for them.
    void EndAll();

    int Started() const { return started; }
    int Killed() const { return killed; }
    /// Front ends that ended with an unexpected exit code.
    const std::vector<std::string>& Problems() const { return problems; }

private:
    struct Member {
        std::wstring command;
        platform::OwnedHandle process;
    };

    void TakeNotice();

    std::vector<Member> members;
    int started = 0;
    int killed = 0;
    std::vector<std::string> problems;
};
