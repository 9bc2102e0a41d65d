#include "cadjobs/command_line/Subcommands.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "front_end/command_line/NamesInText.h"
#include "text/Text.h"

namespace front_end {
namespace {

constexpr std::size_t any = std::size_t{1} << 24; // more than fit on any system's command line

template <auto member>
void TakeFlag(Command& command, const Values&) {
    command.*member = true;
}

template <auto member>
void TakeLast(Command& command, const Values& values) {
    command.*member = values.back();
}

template <auto member>
void TakeEach(Command& command, const Values& values) {
    command.*member = values;
}

/// Names may have commas between them.
template <auto member>
void TakeNames(Command& command, const Values& values) {
    for (const std::wstring& value : values) {
        const Values names = NamesInText(value);
        (command.*member).insert((command.*member).end(), names.begin(), names.end());
    }
}

void TakeRun(Command& command, const Values& values) {
    command.scenario = values.front();
    command.inputs.assign(values.begin() + 1, values.end());
}

void TakeScenario(Command& command, const Values& values) {
    command.ids = WithoutBlanks(values);
    if (command.ids.empty()) {
        throw UsageProblem{L"Usage/OperandMissing", L"SCENARIO"};
    }
}

void TakeColours(Command& command, const Values& values) {
    const std::wstring& choice = values.back();
    if (choice != L"auto" && choice != L"always" && choice != L"never") {
        throw UsageProblem{L"Usage/Colours", choice};
    }
    command.colours = choice;
}

void TakeReuse(Command& command, const Values&) {
    if (command.reuse == false) {
        throw UsageProblem{L"Usage/IdleOption", L"--reuse"};
    }
    command.reuse = true;
}

void TakeNoReuse(Command& command, const Values&) {
    if (command.reuse == true) {
        throw UsageProblem{L"Usage/IdleOption", L"--reuse"};
    }
    command.reuse = false;
}

void TakeAll(Command& command, const Values&) {
    command.showsAll = true;
    if (command.kind == CommandKind::Cancel) {
        command.kind = CommandKind::CancelAll;
    }
}

const std::vector<OptionSpec>& Options() {
    static const std::vector<OptionSpec> options = {
        {"--json", ValueKind::Flag, TakeFlag<&Command::asJson>},
        {"--color", ValueKind::ColourChoice, TakeColours},
        {"-f,--client-only", ValueKind::Flag, TakeFlag<&Command::clientOnly>},
        {"-l,--log-file", ValueKind::File, TakeLast<&Command::logFile>},
        {"-s,--state", ValueKind::States, TakeNames<&Command::states>},
        {"--scenario", ValueKind::Scenario, TakeLast<&Command::scenarioName>},
        {"--label", ValueKind::Text, TakeLast<&Command::label>},
        {"--text", ValueKind::Text, TakeLast<&Command::searchedText>},
        {"--older-than", ValueKind::Duration, TakeLast<&Command::olderThan>},
        {"--newer-than", ValueKind::Duration, TakeLast<&Command::newerThan>},
        {"--sort", ValueKind::SortColumn, TakeLast<&Command::sortColumn>},
        {"--reverse", ValueKind::Flag, TakeFlag<&Command::isReversed>},
        {"--columns", ValueKind::Column, TakeNames<&Command::columns>},
        {"--group-by", ValueKind::GroupColumn, TakeLast<&Command::groupColumn>},
        {"-n,--limit", ValueKind::Number, TakeLast<&Command::limit>},
        {"-a,--all", ValueKind::Flag, TakeAll},
        {"-o,--output", ValueKind::Directory, TakeLast<&Command::outputFolder>},
        {"--argument", ValueKind::Parameter, TakeLast<&Command::runArgument>},
        {"--priority", ValueKind::Number, TakeLast<&Command::priority>},
        {"--not-before", ValueKind::Time, TakeLast<&Command::notBefore>},
        {"--need", ValueKind::Text, TakeEach<&Command::needs>},
        {"--after", ValueKind::Jobs, TakeNames<&Command::after>},
        {"--after-end", ValueKind::Jobs, TakeNames<&Command::afterEnd>},
        {"--skip-if-after-fails", ValueKind::Flag, TakeFlag<&Command::skipsIfAfterFails>},
        {"--on-hold", ValueKind::Flag, TakeFlag<&Command::isOnHold>},
        {"--reuse", ValueKind::Flag, TakeReuse},
        {"--no-reuse", ValueKind::Flag, TakeNoReuse},
        {"--retries", ValueKind::Number, TakeLast<&Command::retries>},
        {"--retry-delay", ValueKind::Duration, TakeLast<&Command::retryDelay>},
        {"--retry-backoff", ValueKind::Flag, TakeFlag<&Command::retriesWithBackoff>},
        {"--retry-only-after-crash", ValueKind::Flag, TakeFlag<&Command::retriesOnlyAfterCrash>},
        {"--time-limit", ValueKind::Duration, TakeLast<&Command::timeLimit>},
        {"--silence-limit", ValueKind::Duration, TakeLast<&Command::silenceLimit>},
        {"--memory-limit", ValueKind::Number, TakeLast<&Command::memoryLimit>},
        {"--cpu-limit", ValueKind::Number, TakeLast<&Command::cpuLimit>},
        {"--dry-run", ValueKind::Flag, TakeFlag<&Command::isDryRun>},
        {"-y,--yes", ValueKind::Flag, TakeFlag<&Command::isConfirmed>},
        {"--language", ValueKind::Language, TakeLast<&Command::language>},
        {"--port", ValueKind::Number, TakeLast<&Command::port>},
        {"--read-only", ValueKind::Flag, TakeFlag<&Command::isReadOnly>},
        {"--no-browser", ValueKind::Flag, TakeFlag<&Command::opensNoBrowser>},
        {"--stop", ValueKind::Flag, TakeFlag<&Command::stopsServer>},
        {"--attempt", ValueKind::Number, TakeLast<&Command::attempt>},
        {"-F,--follow", ValueKind::Flag, TakeFlag<&Command::follows>},
    };
    return options;
}

using Names = std::vector<const char*>;

/// The options of all subcommands come last.
Names WithCommon(std::initializer_list<Names> groups) {
    Names all;
    for (const Names& group : groups) {
        all.insert(all.end(), group.begin(), group.end());
    }
    for (const char* const name : {"--json", "--color", "--client-only", "--log-file"}) {
        all.push_back(name);
    }
    return all;
}

const Names conditions = {"--state", "--scenario", "--label", "--text", "--older-than", "--newer-than"};
const Names changes = {"--priority", "--not-before", "--need"};
const Names decisions = {
    "--after",      "--after-end",     "--skip-if-after-fails", "--on-hold",       "--reuse",
    "--no-reuse",   "--retries",       "--retry-delay",         "--retry-backoff", "--retry-only-after-crash",
    "--time-limit", "--silence-limit", "--memory-limit",        "--cpu-limit"};

std::vector<SubcommandSpec> JobSubcommands() {
    using Kind = CommandKind;
    const OperandSpec jobs = {"JOB", ValueKind::Jobs, 1, any, TakeNames<&Command::ids>};
    OperandSpec someJobs = jobs;
    someJobs.least = 0;
    const auto ofJobs = [&](const char* name, Kind kind, const Names& more) {
        return SubcommandSpec{name, "JobGroup", kind, jobs, WithCommon({more, conditions})};
    };
    return {
        {"run",
         "JobGroup",
         Kind::Run,
         {"SCENARIO INPUT", ValueKind::Scenario, 2, any, TakeRun},
         WithCommon({{"--output", "--argument"}, changes, decisions})},
        {"add", "JobGroup", Kind::Add, {"FILE", ValueKind::File, 1, 1, TakeLast<&Command::jobsFile>}, WithCommon({})},
        {"list", "JobGroup", Kind::List, someJobs,
         WithCommon({conditions, {"--sort", "--reverse", "--columns", "--group-by", "--limit", "--all"}})},
        {"watch", "JobGroup", Kind::Watch, {}, WithCommon({})},
        ofJobs("show", Kind::Show, {}),
        ofJobs("wait", Kind::Wait, {}),
        {"log",
         "JobGroup",
         Kind::Log,
         {"JOB", ValueKind::Jobs, 1, 1, TakeNames<&Command::ids>},
         WithCommon({{"--follow", "--attempt"}})},
        ofJobs("cancel", Kind::Cancel, {"--all", "--yes"}),
        ofJobs("delete", Kind::Delete, {"--yes"}),
        {"clean", "JobGroup", Kind::Clean, {}, WithCommon({{"--dry-run", "--yes"}, conditions})},
        ofJobs("again", Kind::Again, {}),
        ofJobs("edit", Kind::Edit, changes),
        ofJobs("hold", Kind::Hold, {}),
        ofJobs("release", Kind::Release, {}),
    };
}

std::vector<SubcommandSpec> OtherSubcommands() {
    using Kind = CommandKind;
    return {
        {"pause", "QueueGroup", Kind::Pause, {}, WithCommon({})},
        {"resume", "QueueGroup", Kind::Resume, {}, WithCommon({})},
        {"scenarios", "ScenarioGroup", Kind::Scenarios, {}, WithCommon({})},
        {"parameters",
         "ScenarioGroup",
         Kind::ParameterSets,
         {"SCENARIO", ValueKind::Scenario, 1, 1, TakeScenario},
         WithCommon({})},
        {"new",
         "ScenarioGroup",
         Kind::NewScenario,
         {"NAME", ValueKind::Text, 1, 1, TakeEach<&Command::operands>},
         {"--language", "--output", "--json", "--color", "--log-file"}},
        {"check",
         "ScenarioGroup",
         Kind::CheckScenario,
         {"SCENARIO INPUT", ValueKind::Scenario, 1, any, TakeEach<&Command::operands>},
         {"--argument", "--output", "--json", "--color", "--log-file"}},
        {"pack",
         "ScenarioGroup",
         Kind::PackScenario,
         {"DIRECTORY", ValueKind::Directory, 1, 1, TakeEach<&Command::operands>},
         {"--output", "--json", "--color", "--log-file"}},
        {"web",
         "OtherGroup",
         Kind::Web,
         {},
         {"--port", "--read-only", "--no-browser", "--stop", "--color", "--log-file"}},
        {"doctor", "OtherGroup", Kind::Doctor, {}, {"--json", "--color", "--log-file"}},
        {"completion",
         "OtherGroup",
         Kind::Completion,
         {"SHELL", ValueKind::Shell, 1, 1, TakeEach<&Command::operands>},
         {}},
        {"complete", "", Kind::Complete, {"WORD", ValueKind::Text, 0, any, TakeEach<&Command::operands>}, {}},
        {"settings check",
         "SettingsGroup",
         Kind::SettingsCheck,
         {"FILE", ValueKind::File, 0, 1, TakeEach<&Command::operands>},
         {"--json", "--color", "--log-file"}},
        {"settings language",
         "SettingsGroup",
         Kind::LanguageCheck,
         {"FILE", ValueKind::File, 1, 1, TakeEach<&Command::operands>},
         {"--json", "--color", "--log-file"}},
        {"settings show", "SettingsGroup", Kind::SettingsShow, {}, {"--json", "--color", "--log-file"}},
        {"settings path", "SettingsGroup", Kind::SettingsPath, {}, {"--json", "--color", "--log-file"}},
        {"host start", "HostGroup", Kind::StartHost, {}, {"--json", "--color", "--log-file"}},
        {"host stop", "HostGroup", Kind::StopHost, {}, {"--json", "--color", "--log-file"}},
        {"host status", "HostGroup", Kind::HostStatus, {}, {"--json", "--color", "--log-file"}},
    };
}

} // namespace

const char* NameOfValue(ValueKind kind) {
    switch (kind) {
    case ValueKind::Flag:
        return "";
    case ValueKind::Text:
    case ValueKind::Parameter:
        return "TEXT";
    case ValueKind::Jobs:
        return "JOB";
    case ValueKind::States:
        return "STATE";
    case ValueKind::Scenario:
        return "SCENARIO";
    case ValueKind::File:
        return "FILE";
    case ValueKind::Directory:
        return "DIRECTORY";
    case ValueKind::Duration:
        return "DURATION";
    case ValueKind::Time:
        return "TIME";
    case ValueKind::Number:
        return "NUMBER";
    case ValueKind::Column:
    case ValueKind::SortColumn:
    case ValueKind::GroupColumn:
        return "COLUMN";
    case ValueKind::ColourChoice:
        return "WHEN";
    case ValueKind::Shell:
        return "SHELL";
    case ValueKind::Language:
        return "LANGUAGE";
    }
    return "";
}

std::vector<std::string> OperandSpec::Words() const {
    std::istringstream stream(name);
    return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}

std::wstring SubcommandSpec::Key() const {
    std::wstring key = text::FromUtf8(name);
    std::replace(key.begin(), key.end(), L' ', L'-');
    return key;
}

std::string OptionSpec::LongName() const {
    const std::string all = names;
    return all.substr(all.find("--"));
}

const std::vector<SubcommandSpec>& Subcommands() {
    static const std::vector<SubcommandSpec> all = [] {
        std::vector<SubcommandSpec> subcommands = JobSubcommands();
        const std::vector<SubcommandSpec> others = OtherSubcommands();
        subcommands.insert(subcommands.end(), others.begin(), others.end());
        return subcommands;
    }();
    return all;
}

const OptionSpec& OptionNamed(const std::string& longName) {
    return *std::find_if(Options().begin(), Options().end(),
                         [&](const OptionSpec& option) { return option.LongName() == longName; });
}

} // namespace front_end
