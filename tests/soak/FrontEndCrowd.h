#pragma once

#include "platform/processes/Process.h"

#include <random>
#include <string>
#include <vector>

/// Front ends as processes of their own that come, stay a while and go, some of them by force.
class FrontEndCrowd {
public:
    /// Takes notice of those that have ended, and starts another when there is room.
    void Start(const platform::ProcessStart& start);
    /// Ends one that still runs by force, whatever it is at; false when there is none.
    [[nodiscard]] bool KillOne(std::mt19937& random);
    /// Ends all and waits for them.
    void EndAll();

    int Started() const { return started; }
    int Killed() const { return killed; }
    /// Those that ended by themselves as no front end should.
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
