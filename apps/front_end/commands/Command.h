#pragma once

#include <optional>
#include <string>
#include <vector>

namespace front_end {

enum class CommandKind {
    Help,
    Version,
    /// The state of the queue at a glance.
    Overview,
    List,
    Show,
    Watch,
    Run,
    Add,
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
    StartHost,
    StopHost,
    HostStatus,
    /// The web page of the queue.
    Web,
    /// Checks everything that jobs need.
    Doctor,
    SettingsPath,
    SettingsShow,
    SettingsCheck,
    LanguageCheck,
    /// The script for a shell.
    Completion,
    /// The candidates for an unfinished command line.
    Complete,
    // For authors of scenarios.
    NewScenario,
    PackScenario,
    CheckScenario
};

/// A parsed command line.
struct Command {
    CommandKind kind = CommandKind::Help;
    /// Numbers and ids of jobs, ranges of numbers ("3-9"), "last" and "failed", as typed.
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
    /// "ruby", "python" or "native".
    std::wstring language = {};
    /// What follows the name of a subcommand that is not about jobs.
    std::vector<std::wstring> operands = {};
    /// The jobs file of `Add`; "-": standard input.
    std::wstring jobsFile = {};
    // Which of the jobs; as typed, empty: not given.
    std::wstring olderThan = {};
    std::wstring newerThan = {};
    /// Names of states.
    std::vector<std::wstring> states = {};
    std::wstring scenarioName = {};
    std::wstring label = {};
    std::wstring searchedText = {};
    // How a list is shown; as typed, empty: not given.
    std::wstring sortColumn = {};
    std::vector<std::wstring> columns = {};
    std::wstring groupColumn = {};
    std::wstring limit = {};
    bool isReversed = false;
    /// A terminal shows all jobs, not only the newest.
    bool showsAll = false;
    /// Many jobs are cancelled or deleted without a question on a terminal.
    bool isConfirmed = false;
    /// "auto", "always" or "never".
    std::wstring colours = {};
    bool retriesWithBackoff = false;
    bool retriesOnlyAfterCrash = false;
    bool skipsIfAfterFails = false;
    bool isOnHold = false;
    /// Nothing: the setting decides.
    std::optional<bool> reuse = {};
    bool isDryRun = false;
    /// The number of an earlier attempt of the job, whose log is printed; as typed, empty: not given.
    std::wstring attempt = {};
    /// The port of the web page; as typed, empty: not given.
    std::wstring port = {};
    bool isReadOnly = false;
    bool opensNoBrowser = false;
    /// Ends the server of the web page.
    bool stopsServer = false;
    bool asJson = false;
    bool follows = false;
    bool clientOnly = false;

    /// True if any condition for jobs is given.
    bool HasConditions() const {
        return !(states.empty() && olderThan.empty() && newerThan.empty() && scenarioName.empty() && label.empty() &&
                 searchedText.empty());
    }

    bool operator==(const Command&) const = default;
};

/// A usage error: the key of a text, and the argument that caused it. Thrown by parsers and commands.
struct UsageProblem {
    std::wstring textKey;
    std::wstring argument;
    /// What may have been meant.
    std::wstring suggestion = {};

    bool operator==(const UsageProblem&) const = default;
};

} // namespace front_end
