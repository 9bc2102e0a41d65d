#pragma once

#include <optional>
#include <string>
#include <vector>

namespace front_end {

enum class CommandKind {
    Help,
    Version,
    List,
    Watch,
    Run,
    Wait,
    Cancel,
    CancelAll,
    Delete,
    Again,
    Clean,
    Edit,
    Hold,
    Release,
    Pause,
    Resume,
    Log,
    Scenarios,
    ParameterSets,
    StopHost
};

/// A parsed command line.
struct Command {
    CommandKind kind = CommandKind::Help;
    /// Numbers or ids of jobs, as typed.
    std::vector<std::wstring> ids = {};
    std::wstring scenario = {};
    /// As typed; each text contains the files of one job, separated by commas.
    std::vector<std::wstring> inputs = {};
    /// Empty: not given.
    std::wstring outputFolder = {};
    std::wstring runArgument = {};
    std::wstring logFile = {};
    // About the start of jobs; as typed, empty: not given.
    std::wstring priority = {};
    std::wstring notBefore = {};
    /// Numbers or ids of jobs.
    std::vector<std::wstring> after = {};
    std::vector<std::wstring> afterEnd = {};
    /// Each "NAME=AMOUNT".
    std::vector<std::wstring> needs = {};
    std::wstring retries = {};
    std::wstring retryDelay = {};
    std::wstring timeLimit = {};
    std::wstring silenceLimit = {};
    std::wstring memoryLimit = {};
    std::wstring cpuLimit = {};
    // About the jobs to be deleted; as typed, empty: not given.
    std::wstring olderThan = {};
    /// Names of states.
    std::vector<std::wstring> states = {};
    bool retriesWithBackoff = false;
    bool retriesOnlyAfterCrash = false;
    bool skipsIfAfterFails = false;
    bool isOnHold = false;
    /// Nothing: the setting decides.
    std::optional<bool> reuse = {};
    bool isDryRun = false;
    bool asJson = false;
    bool follows = false;
    bool clientOnly = false;

    bool operator==(const Command&) const = default;
};

/// A usage error: the key of a text, and the argument that caused it. Thrown by parsers and commands.
struct UsageProblem {
    std::wstring textKey;
    std::wstring argument;

    bool operator==(const UsageProblem&) const = default;
};

} // namespace front_end
