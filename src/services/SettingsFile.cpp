#include "services/SettingsFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <thread>
#include <tuple>
#include <utility>

#include "formats/json/Reading.h"
#include "formats/json/SchedulingLayouts.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "platform/system/Installation.h"
#include "text/EscapeControls.h"
#include "text/Wtf8.h"

namespace settings {
namespace {

constexpr std::size_t largestFile = std::size_t{1} << 20;
constexpr std::size_t longestText = 4096;

/// No path of either system is longer.
bool IsPlain(const std::wstring& text) {
    return text::IsOneLine(text, longestText);
}

struct Path {
    static constexpr auto expected = L"a path of 1 to 4096 characters";
    static bool Accepts(const std::wstring& path) { return !path.empty() && IsPlain(path); }
};

struct PathOrNone {
    static constexpr auto expected = L"a path of at most 4096 characters (empty: none)";
    static bool Accepts(const std::wstring& path) { return IsPlain(path); }
};

struct Label {
    static constexpr auto expected = L"a text of at most 4096 characters without line breaks";
    static bool Accepts(const std::wstring& label) { return IsPlain(label); }
};

struct CommandPart {
    static constexpr auto expected = L"a program or argument of 1 to 4096 characters";
    static bool Accepts(const std::wstring& part) { return !part.empty() && IsPlain(part); }
};

struct Culture {
    static constexpr auto expected = L"the name of a culture, such as \"en-US\"";
    static bool Accepts(const std::wstring& name) {
        return !name.empty() && name.size() <= 35 && name.find_first_not_of(nameCharacters) == std::wstring::npos;
    }
    static constexpr auto nameCharacters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
};

struct EndpointAddress {
    static constexpr auto expected = L"a name of 1 to 64 letters, digits, dots, dashes and underscores";
    static bool Accepts(const std::wstring& name) {
        return !name.empty() && name.size() <= 64 && name.find_first_not_of(nameCharacters) == std::wstring::npos;
    }
    static constexpr auto nameCharacters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.";
};

struct LogLevel {
    static constexpr auto expected = L"\"debug\", \"info\", \"warning\" or \"error\"";
    [[nodiscard]] static bool ReadText(log_file::Level& level, std::string_view name) {
        const auto named = log_file::LevelNamed(text::FromTrustedWtf8(name));
        level = named.value_or(level);
        return named.has_value();
    }
};

struct Days {
    static constexpr auto expected = L"a whole number of days from 1 to 36500";
    static bool Accepts(std::int32_t days) { return days >= 1 && days <= 36500; }
};

struct GraceSeconds {
    static constexpr auto expected = L"a whole number of seconds from 0 to 3600";
    static bool Accepts(std::int32_t seconds) { return seconds >= 0 && seconds <= 3600; }
};

struct LogLimit {
    static constexpr auto expected = L"a whole number of bytes from 4096 to 1073741824";
    static bool Accepts(std::int64_t bytes) { return bytes >= 4096 && bytes <= 1073741824; }
};

/// A number, or the keyword for the number of processor cores.
struct ParallelJobs {
    static constexpr auto expected = L"a whole number of jobs from 1 to 500 (on Windows to 60), or \"auto\"";
    static std::int32_t Most() { return std::min(mostParallelJobs, platform::mostWaitedProcesses); }
    static bool Accepts(std::int32_t jobs) { return jobs >= 1 && jobs <= Most(); }
    [[nodiscard]] static bool ReadText(std::int32_t& jobs, std::string_view word) {
        jobs = std::clamp(static_cast<std::int32_t>(std::thread::hardware_concurrency()), 1, Most());
        return word == "auto";
    }
};

/// The amounts by name.
struct Resource {
    static constexpr auto expected = L"a whole number of at least 1";
    static bool Accepts(std::int64_t amount) { return amount >= 1; }
    static constexpr auto expectedName = L"as its name 1 to 64 letters, digits, dots, dashes and underscores";
    static bool AcceptsName(const std::wstring& name) { return EndpointAddress::Accepts(name); }
};

/// The versions by tool.
struct ToolVersion : Label {
    static constexpr auto expectedName = Resource::expectedName;
    static bool AcceptsName(const std::wstring& name) { return EndpointAddress::Accepts(name); }
};

struct AgeingMinutes {
    static constexpr auto expected = L"a whole number of minutes from 1 to 525600";
    static bool Accepts(std::int32_t minutes) { return minutes >= 1 && minutes <= 525600; }
};

struct AfterRestartWord {
    static constexpr auto expected = L"\"cancel\", \"queued\" or \"all\"";
    [[nodiscard]] static bool ReadText(AfterRestart& value, std::string_view word) {
        value = word == "all" ? AfterRestart::All : word == "queued" ? AfterRestart::Queued : AfterRestart::Cancel;
        return value != AfterRestart::Cancel || word == "cancel";
    }
};

/// The commands by file extension.
struct InterpreterCommand : CommandPart {
    static constexpr auto expectedName = L"as its name an extension with the dot, such as \".rb\"";
    static bool AcceptsName(const std::wstring& extension) {
        return extension.size() > 1 && extension.rfind(L'.') == 0 &&
               extension.find_first_of(L"/\\: ") == std::wstring::npos;
    }
};

using json::Member;
using json::rule;

struct AutoDeleteMembers {
    static constexpr auto members =
        std::make_tuple(Member{"enabled", &AutoDelete::enabled}, Member{"days", &AutoDelete::days, rule<Days>});
};

struct DirectoryMembers {
    static constexpr auto members =
        std::make_tuple(Member{"path", &ScenarioDirectory::path, rule<Path>, json::Presence::Required},
                        Member{"label", &ScenarioDirectory::label, rule<Label>});
};

struct HookMembers {
    static constexpr auto members = std::make_tuple(Member{"jobEnded", &HookCommands::jobEnded, rule<CommandPart>},
                                                    Member{"jobFailed", &HookCommands::jobFailed, rule<CommandPart>},
                                                    Member{"queueEmpty", &HookCommands::queueEmpty, rule<CommandPart>});
};

struct LostAfterSeconds {
    static constexpr auto expected = L"a whole number of seconds from 1 to 3600";
    static bool Accepts(std::int32_t seconds) { return seconds >= 1 && seconds <= 3600; }
};

struct SlurmSettingsMembers {
    static constexpr auto members = std::tuple_cat(
        slurm::SlurmMembers::members,
        std::make_tuple(Member{"lostAfterSeconds", &SlurmSettings::lostAfterSeconds, rule<LostAfterSeconds>}));
};

struct Port {
    static constexpr auto expected = L"a port from 1 to 65535, or 0 for any free one";
    static bool Accepts(std::int32_t port) { return port >= 0 && port <= 65535; }
};

struct WebAddress {
    static constexpr auto expected = L"an address such as \"https://jobs.example.org/alice/\" (empty: none)";
    static bool Accepts(const std::wstring& address) {
        return address.empty() ||
               (IsPlain(address) && (address.starts_with(L"https://") || address.starts_with(L"http://")));
    }
};

struct WebMembers {
    static constexpr auto members =
        std::make_tuple(Member{"port", &WebSettings::port, rule<Port>}, Member{"readOnly", &WebSettings::readOnly},
                        Member{"publicAddress", &WebSettings::publicAddress, rule<WebAddress>},
                        Member{"inputDirectories", &WebSettings::inputDirectories, rule<Path>});
};

struct File {
    static constexpr auto members = std::make_tuple(
        json::Version(), Member{"workDirectory", &Settings::workDirectory, rule<Path>},
        Member{"jobListFile", &Settings::jobListFile, rule<Path>},
        Member{"logFile", &Settings::logFile, rule<PathOrNone>},
        Member{"logLevel", &Settings::logLevel, rule<LogLevel>},
        Member{"autoDeleteWorkFolder", &Settings::autoDeleteWorkFolder, rule<AutoDeleteMembers>},
        Member{"scenarioDirectories", &Settings::scenarioDirectories, rule<DirectoryMembers>},
        Member{"culture", &Settings::culture, rule<Culture>},
        Member{"defaultCulture", &Settings::defaultCulture, rule<Culture>},
        Member{"functionModules", &Settings::functionModules, rule<Path>},
        Member{"libraryDirectories", &Settings::libraryDirectories, rule<Path>},
        Member{"eventTransmitter", &Settings::eventTransmitter, rule<Path>},
        Member{"transmitterName", &Settings::transmitterName, rule<EndpointAddress>},
        Member{"stringResourceFile", &Settings::stringResourceFile, rule<Path>},
        Member{"scenarioRunner", &Settings::scenarioRunner, rule<Path>},
        Member{"scenarioApiDirectory", &Settings::scenarioApiDirectory, rule<Path>},
        Member{"interpreters", &Settings::interpreters, rule<InterpreterCommand>},
        Member{"cancelGraceSeconds", &Settings::cancelGraceSeconds, rule<GraceSeconds>},
        Member{"scenarioLogLimitBytes", &Settings::scenarioLogLimitBytes, rule<LogLimit>},
        Member{"parallelJobs", &Settings::parallelJobs, rule<ParallelJobs>},
        Member{"hooks", &Settings::hooks, rule<HookMembers>}, Member{"resources", &Settings::resources, rule<Resource>},
        Member{"ageingMinutes", &Settings::ageingMinutes, rule<AgeingMinutes>},
        Member{"afterRestart", &Settings::afterRestart, rule<AfterRestartWord>},
        Member{"slurm", &Settings::slurm, rule<SlurmSettingsMembers>}, Member{"provenance", &Settings::provenance},
        Member{"reuse", &Settings::reuse}, Member{"jobDefaults", &Settings::jobDefaults, rule<json::Layout<RunRules>>},
        Member{"toolVersions", &Settings::toolVersions, rule<ToolVersion>},
        Member{"web", &Settings::web, rule<WebMembers>});
};

void Resolve(const std::wstring& directory, std::wstring& path) {
    if (!path.empty()) {
        path = platform::ResolveAgainst(directory, path);
    }
}

/// Paths in a settings file are relative to its directory.
void ResolvePaths(const std::wstring& directory, Settings& read) {
    for (const auto member :
         {&Settings::workDirectory, &Settings::jobListFile, &Settings::logFile, &Settings::eventTransmitter,
          &Settings::stringResourceFile, &Settings::scenarioRunner, &Settings::scenarioApiDirectory}) {
        Resolve(directory, read.*member);
    }
    for (auto* const paths : {&read.functionModules, &read.libraryDirectories, &read.web.inputDirectories}) {
        for (std::wstring& path : *paths) {
            Resolve(directory, path);
        }
    }
    for (ScenarioDirectory& scenarios : read.scenarioDirectories) {
        Resolve(directory, scenarios.path);
    }
}

/// The first member that conflicts with others, with what was expected; empty if there is none.
std::wstring FindContradiction(const Settings& read) {
    for (const auto& [extension, command] : read.interpreters) {
        if (command.empty()) {
            return L"interpreters" + extension + L": expected a list that begins with a program, found an empty list";
        }
    }
    return slurm::FindContradiction(read.slurm, 0);
}

/// Appends the names of the members of one object, and of objects inside.
template <typename Members>
void AppendNames(const std::wstring& prefix, std::vector<std::wstring>& names) {
    const auto append = [&]<typename MemberType>(const MemberType& member) {
        const std::wstring name = prefix + text::FromTrustedWtf8(member.name);
        names.push_back(name);
        if constexpr (requires { MemberType::Rule::members; }) {
            AppendNames<typename MemberType::Rule>(name + L".", names);
        }
    };
    std::apply([&](const auto&... member) { (append(member), ...); }, Members::members);
}

} // namespace

std::vector<std::wstring> MemberNames() {
    std::vector<std::wstring> names;
    AppendNames<File>(L"", names);
    return names;
}

bool CheckFile(const std::wstring& path, Settings& read, std::wstring& problem, std::vector<std::wstring>& warnings) {
    return ReadSettingsFile(path, read, problem, warnings);
}

Settings BuiltInSettings() {
    const std::wstring userData = platform::UserDataDirectory();
    const std::wstring data = platform::ResolveAgainst(userData.empty() ? platform::CurrentDirectory() : userData,
                                                       platform::applicationDirectoryName);
    const std::wstring here = platform::OwnDirectory();
    Settings settings;
    settings.workDirectory = data + L"\\work";
    settings.jobListFile = data + L"\\job_list.json";
    settings.logFile = data + L"\\controller.log";
    settings.scenarioRunner = platform::InstalledProgram(L"scenario_runner", here);
    settings.functionModules = {platform::InstalledPlugin(L"local_process", here)};
    settings.eventTransmitter = platform::InstalledPlugin(L"local_socket", here);
    settings.stringResourceFile = platform::InstalledData(L"strings.json", here);
    settings.scenarioApiDirectory = platform::InstalledData(L"scenario_api", here);
    settings.interpreters = {{L".rb", {L"ruby"}}};
    return settings;
}

bool ReadSettingsFile(const std::wstring& path, Settings& read, std::wstring& problem,
                      std::vector<std::wstring>& warnings) {
    Settings fresh = BuiltInSettings();
    const auto builtInCommands = std::exchange(fresh.interpreters, {});
    std::vector<std::wstring> unknownMembers;
    if (!json::ReadFileSlot(path, largestFile, json::SlotOf<File>(fresh), problem, &unknownMembers)) {
        return false;
    }
    for (const std::wstring& unknownMember : unknownMembers) {
        warnings.push_back(json::ProblemInFile(path, unknownMember));
    }
    if (const std::wstring contradiction = FindContradiction(fresh); !contradiction.empty()) {
        problem = platform::ToNativeText(path) + L": " + contradiction;
        return false;
    }
    fresh.file = path;
    ResolvePaths(platform::ParentDirectory(path), fresh);
    // The file's commands add to the built-in ones, or replace them.
    fresh.interpreters.insert(builtInCommands.begin(), builtInCommands.end());
    read = std::move(fresh);
    return true;
}

} // namespace settings
