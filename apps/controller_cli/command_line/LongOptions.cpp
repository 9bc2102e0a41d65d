#include "controller_cli/command_line/LongOptions.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include <CLI/CLI.hpp>

#include "front_end/command_line/NamesInText.h"
#include "front_end/command_line/Utf8Arguments.h"
#include "text/Text.h"

namespace front_end {
namespace {

using Arguments = std::vector<std::wstring>;

struct Switch {
    const char* name;
    CommandKind kind;
};

/// The commands that take no value.
constexpr std::array plainCommands = {
    Switch{"--help", CommandKind::Help},
    Switch{"--version", CommandKind::Version},
    Switch{"--list", CommandKind::List},
    Switch{"--watch", CommandKind::Watch},
    Switch{"--cancel-all", CommandKind::CancelAll},
    Switch{"--clean", CommandKind::Clean},
    Switch{"--pause", CommandKind::Pause},
    Switch{"--resume", CommandKind::Resume},
    Switch{"--scenarios", CommandKind::Scenarios},
    Switch{"--stop-host", CommandKind::StopHost},
};

/// The commands that take a value.
constexpr std::array namingCommands = {
    Switch{"--run", CommandKind::Run},       Switch{"--wait", CommandKind::Wait},
    Switch{"--cancel", CommandKind::Cancel}, Switch{"--delete", CommandKind::Delete},
    Switch{"--again", CommandKind::Again},   Switch{"--edit", CommandKind::Edit},
    Switch{"--hold", CommandKind::Hold},     Switch{"--release", CommandKind::Release},
    Switch{"--log", CommandKind::Log},       Switch{"--parameter-sets", CommandKind::ParameterSets},
};

constexpr std::array optionsWithValues = {"--output",      "--argument",   "-l,--log-file",   "--priority",
                                          "--not-before",  "--after",      "--after-end",     "--retries",
                                          "--retry-delay", "--time-limit", "--silence-limit", "--memory-limit",
                                          "--cpu-limit",   "--older-than", "--state",         "--jobs"};
constexpr std::array flags = {"--json",    "--follow",        "-f,--client-only",         "--skip-if-after-fails",
                              "--on-hold", "--retry-backoff", "--retry-only-after-crash", "--dry-run",
                              "--reuse",   "--no-reuse"};

/// More than fit on any system's command line.
constexpr int mostInputs = 1 << 24;

void Describe(CLI::App& app) {
    app.set_help_flag("");
    app.allow_windows_style_options(false);
    app.allow_extras();
    for (const Switch& command : plainCommands) {
        app.add_flag(command.name);
    }
    for (const Switch& command : namingCommands) {
        const int most = command.kind == CommandKind::Run ? mostInputs : 1;
        app.add_option(command.name)->expected(1, most)->multi_option_policy(CLI::MultiOptionPolicy::Throw);
    }
    for (const char* const name : optionsWithValues) {
        app.add_option(name);
    }
    // Once for each resource.
    app.add_option("--need")->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    for (const char* const name : flags) {
        app.add_flag(name);
    }
}

bool IsGiven(const CLI::App& app, const char* name) {
    return app.get_option(name)->count() > 0;
}

std::vector<std::wstring> ValuesOf(const CLI::App& app, const char* name) {
    return WideTexts(app.get_option(name)->results());
}

std::wstring ValueOf(const CLI::App& app, const char* name) {
    return IsGiven(app, name) ? ValuesOf(app, name).back() : std::wstring();
}

const Switch* OneCommand(const CLI::App& app) {
    const Switch* given = nullptr;
    const auto look = [&](const Switch& command) {
        if (!IsGiven(app, command.name)) {
            return;
        }
        if (given != nullptr) {
            throw UsageProblem{L"Usage/TwoCommands", text::FromUtf8(command.name)};
        }
        given = &command;
    };
    std::for_each(plainCommands.begin(), plainCommands.end(), look);
    std::for_each(namingCommands.begin(), namingCommands.end(), look);
    return given;
}

bool NamesSomething(const Switch& command) {
    return std::any_of(namingCommands.begin(), namingCommands.end(),
                       [&](const Switch& each) { return each.kind == command.kind; });
}

/// `operands` are the arguments after "--".
void TakeNames(const CLI::App& app, const Switch& given, const Arguments& operands, Command& command) {
    if (!NamesSomething(given)) {
        return;
    }
    std::vector<std::wstring> values = ValuesOf(app, given.name);
    values.insert(values.end(), operands.begin(), operands.end());
    const std::wstring name = text::FromUtf8(given.name);
    if (given.kind == CommandKind::Run) {
        if (values.size() < 2) {
            throw UsageProblem{L"Usage/NoInputs", name};
        }
        command.scenario = values.front();
        command.inputs.assign(values.begin() + 1, values.end());
        return;
    }
    if (values.size() > 1) {
        throw UsageProblem{L"Usage/WrongValue", name};
    }
    const bool takesOne = given.kind == CommandKind::Log || given.kind == CommandKind::ParameterSets;
    command.ids = takesOne ? WithoutBlanks(values) : NamesInText(values.front());
    if (command.ids.empty()) {
        throw UsageProblem{L"Usage/ValueMissing", name};
    }
}

bool CanBeJson(CommandKind kind) {
    constexpr std::array reading = {CommandKind::List, CommandKind::Watch,     CommandKind::Run,
                                    CommandKind::Wait, CommandKind::Scenarios, CommandKind::ParameterSets};
    return std::find(reading.begin(), reading.end(), kind) != reading.end();
}

/// An option without effect is a usage error.
void RefuseIdleOptions(const CLI::App& app, const Command& command) {
    const auto refuse = [&](const char* name, bool isIdle) {
        if (isIdle && IsGiven(app, name)) {
            throw UsageProblem{L"Usage/IdleOption", text::FromUtf8(name)};
        }
    };
    refuse("--json", !CanBeJson(command.kind));
    refuse("--jobs", command.kind != CommandKind::List);
    refuse("--follow", command.kind != CommandKind::Log);
    for (const char* const name : {"--older-than", "--state", "--dry-run"}) {
        refuse(name, command.kind != CommandKind::Clean);
    }
    for (const char* const name :
         {"--output", "--argument", "--after", "--after-end", "--skip-if-after-fails", "--on-hold", "--retries",
          "--retry-delay", "--retry-backoff", "--retry-only-after-crash", "--time-limit", "--silence-limit",
          "--memory-limit", "--cpu-limit"}) {
        refuse(name, command.kind != CommandKind::Run);
    }
    refuse("--reuse", command.kind != CommandKind::Run || IsGiven(app, "--no-reuse"));
    refuse("--no-reuse", command.kind != CommandKind::Run);
    for (const char* const name : {"--priority", "--not-before", "--need"}) {
        refuse(name, command.kind != CommandKind::Run && command.kind != CommandKind::Edit);
    }
}

Command CommandOf(const CLI::App& app, const Arguments& operands) {
    if (const auto rest = app.remaining(); !rest.empty()) {
        throw UsageProblem{L"Usage/UnknownArgument", text::FromUtf8(rest.front())};
    }
    const Switch* const given = OneCommand(app);
    if (given == nullptr) {
        throw UsageProblem{L"Usage/NoCommand", {}};
    }
    if (!operands.empty() && !NamesSomething(*given)) {
        throw UsageProblem{L"Usage/UnknownArgument", operands.front()};
    }
    Command command;
    command.kind = given->kind;
    TakeNames(app, *given, operands, command);
    if (IsGiven(app, "--jobs")) {
        command.ids = NamesInText(ValueOf(app, "--jobs"));
    }
    command.outputFolder = ValueOf(app, "--output");
    command.runArgument = ValueOf(app, "--argument");
    command.logFile = ValueOf(app, "--log-file");
    command.priority = ValueOf(app, "--priority");
    command.notBefore = ValueOf(app, "--not-before");
    command.after = NamesInText(ValueOf(app, "--after"));
    command.afterEnd = NamesInText(ValueOf(app, "--after-end"));
    command.needs = ValuesOf(app, "--need");
    command.retries = ValueOf(app, "--retries");
    command.retryDelay = ValueOf(app, "--retry-delay");
    command.timeLimit = ValueOf(app, "--time-limit");
    command.silenceLimit = ValueOf(app, "--silence-limit");
    command.memoryLimit = ValueOf(app, "--memory-limit");
    command.cpuLimit = ValueOf(app, "--cpu-limit");
    command.olderThan = ValueOf(app, "--older-than");
    command.states = NamesInText(ValueOf(app, "--state"));
    command.isDryRun = IsGiven(app, "--dry-run");
    command.retriesWithBackoff = IsGiven(app, "--retry-backoff");
    command.retriesOnlyAfterCrash = IsGiven(app, "--retry-only-after-crash");
    command.skipsIfAfterFails = IsGiven(app, "--skip-if-after-fails");
    command.isOnHold = IsGiven(app, "--on-hold");
    if (IsGiven(app, "--reuse") || IsGiven(app, "--no-reuse")) {
        command.reuse = IsGiven(app, "--reuse");
    }
    command.asJson = IsGiven(app, "--json");
    command.follows = IsGiven(app, "--follow");
    command.clientOnly = IsGiven(app, "--client-only");
    RefuseIdleOptions(app, command);
    return command;
}

/// A command line split at its first "--".
struct PartedArguments {
    Arguments options;
    /// The arguments after "--"; never options.
    Arguments operands;
};

bool IsNamingCommand(const std::wstring& argument) {
    return std::any_of(namingCommands.begin(), namingCommands.end(),
                       [&](const Switch& command) { return text::FromUtf8(command.name) == argument; });
}

/// The library supports values of options only. If a command has no value before the "--", the first operand is
/// attached to it ("--run=-a.rb").
void AttachFirstOperand(PartedArguments& parted) {
    for (std::size_t i = 0; i < parted.options.size() && !parted.operands.empty(); ++i) {
        const bool isLast = i + 1 == parted.options.size();
        if (IsNamingCommand(parted.options[i]) && (isLast || parted.options[i + 1].starts_with(L"-"))) {
            parted.options[i] += L"=" + parted.operands.front();
            parted.operands.erase(parted.operands.begin());
            return;
        }
    }
}

PartedArguments Part(const Arguments& arguments) {
    const auto end = std::find(arguments.begin(), arguments.end(), L"--");
    PartedArguments parted{{arguments.begin(), end}, {}};
    if (end != arguments.end()) {
        parted.operands.assign(std::next(end), arguments.end());
    }
    AttachFirstOperand(parted);
    return parted;
}

} // namespace

bool HasLongOptions(const std::vector<std::wstring>& arguments) {
    const auto end = std::find(arguments.begin(), arguments.end(), L"--");
    return std::any_of(arguments.begin(), end,
                       [](const std::wstring& argument) { return argument.starts_with(L"--"); });
}

Command ParseLongCommand(const std::vector<std::wstring>& arguments) {
    const PartedArguments parted = Part(arguments);
    if (std::find(parted.options.begin(), parted.options.end(), L"--help") != parted.options.end()) {
        return {.kind = CommandKind::Help};
    }
    CLI::App app;
    Describe(app);
    try {
        app.parse(ReversedUtf8(parted.options));
    } catch (const CLI::ParseError& error) {
        // The message starts with the option that caused it: "--wait: 1 required ...".
        const std::string what = error.what();
        throw UsageProblem{L"Usage/WrongValue", text::FromUtf8(what.substr(0, what.find(':')))};
    }
    return CommandOf(app, parted.operands);
}

} // namespace front_end
