#pragma once

#include <string>
#include <vector>

namespace controller_cli {

enum class LongCommandKind {
    Help,
    Version,
    List,
    Watch,
    Run,
    Wait,
    Cancel,
    CancelAll,
    Delete,
    Log,
    Scenarios,
    ParameterSets,
    StopHost
};

/// A command line with long options.
struct LongCommand {
    LongCommandKind kind = LongCommandKind::Help;
    /// Numbers or ids of jobs, as typed.
    std::vector<std::wstring> ids = {};
    std::wstring scenario = {};
    /// As typed; the files of one job stand in one text, between commas.
    std::vector<std::wstring> inputs = {};
    /// Empty: not given.
    std::wstring outputFolder = {};
    std::wstring runArgument = {};
    std::wstring logFile = {};
    bool asJson = false;
    bool follows = false;
    bool clientOnly = false;

    bool operator==(const LongCommand&) const = default;
};

/// Why a command line cannot be used: the key of a text, and the argument that it is about.
struct UsageProblem {
    std::wstring textKey;
    std::wstring argument;

    bool operator==(const UsageProblem&) const = default;
};

/// True for a command line that has long options; what stands behind "--" is none.
bool HasLongOptions(const std::vector<std::wstring>& arguments);

/// Reads such a command line; throws `UsageProblem`. With `--help` it asks for help, whatever else it holds. What
/// stands behind "--" belongs to the command's names, inputs or ids, also where it begins with "-".
LongCommand ParseLongCommand(const std::vector<std::wstring>& arguments);

} // namespace controller_cli
