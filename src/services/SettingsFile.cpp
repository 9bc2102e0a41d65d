#include "services/SettingsFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <thread>
#include <tuple>
#include <utility>

#include "formats/CheckedValue.h"
#include "formats/json/Reading.h"
#include "platform/files/Directories.h"
#include "platform/files/NativePath.h"

namespace settings {
namespace {

constexpr std::size_t largestFile = std::size_t{1} << 20;
constexpr std::size_t longestText = 4096;

/// True for a text no longer than any path of either system, without control characters.
bool IsPlain(const std::wstring& text) {
    return text.size() <= longestText &&
           std::none_of(text.begin(), text.end(), [](wchar_t character) { return character < 0x20; });
}

struct TextRule {
    using Value = std::wstring;
    static constexpr auto initial = L"";
};

struct Path : TextRule {
    static constexpr auto expected = L"a path of 1 to 4096 characters";
    static bool Accepts(const std::wstring& path) { return !path.empty() && IsPlain(path); }
};

struct PathOrNone : TextRule {
    static constexpr auto expected = L"a path of at most 4096 characters (empty: none)";
    static bool Accepts(const std::wstring& path) { return IsPlain(path); }
};

struct Label : TextRule {
    static constexpr auto expected = L"a text of at most 4096 characters without line breaks";
    static bool Accepts(const std::wstring& label) { return IsPlain(label); }
};

struct CommandPart : TextRule {
    static constexpr auto expected = L"a program or argument of 1 to 4096 characters";
    static bool Accepts(const std::wstring& part) { return !part.empty() && IsPlain(part); }
};

struct Culture {
    using Value = std::wstring;
    static constexpr auto initial = L"en-US";
    static constexpr auto expected = L"the name of a culture, such as \"en-US\"";
    static bool Accepts(const std::wstring& name) {
        return !name.empty() && name.size() <= 35 && name.find_first_not_of(nameCharacters) == std::wstring::npos;
    }
    static constexpr auto nameCharacters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
};

struct EndpointAddress {
    using Value = std::wstring;
    static constexpr auto initial = L"default";
    static constexpr auto expected = L"a name of 1 to 64 letters, digits, dots, dashes and underscores";
    static bool Accepts(const std::wstring& name) {
        return !name.empty() && name.size() <= 64 && name.find_first_not_of(nameCharacters) == std::wstring::npos;
    }
    static constexpr auto nameCharacters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.";
};

struct LogLevel : TextRule {
    static constexpr auto initial = log_file::levelNames[static_cast<std::size_t>(log_file::Level::Info)];
    static constexpr auto expected = L"\"debug\", \"info\", \"warning\" or \"error\"";
    static bool Accepts(const std::wstring& name) { return log_file::LevelNamed(name).has_value(); }
};

struct Days {
    using Value = std::int32_t;
    static constexpr Value initial = 30;
    static constexpr auto expected = L"a whole number of days from 1 to 36500";
    static bool Accepts(Value days) { return days >= 1 && days <= 36500; }
};

struct GraceSeconds {
    using Value = std::int32_t;
    static constexpr Value initial = 5;
    static constexpr auto expected = L"a whole number of seconds from 0 to 3600";
    static bool Accepts(Value seconds) { return seconds >= 0 && seconds <= 3600; }
};

struct LogLimit {
    using Value = std::int64_t;
    static constexpr Value initial = 1048576;
    static constexpr auto expected = L"a whole number of bytes from 4096 to 1073741824";
    static bool Accepts(Value bytes) { return bytes >= 4096 && bytes <= 1073741824; }
};

/// A number, or the keyword for the number of processor cores.
struct ParallelJobs {
    std::int32_t value = 1;
};

std::int32_t CoreCount() {
    return std::clamp(static_cast<std::int32_t>(std::thread::hardware_concurrency()), 1, mostParallelJobs);
}

using Paths = std::vector<CheckedValue<Path>>;
using Command = std::vector<CheckedValue<CommandPart>>;

struct AutoDelete {
    bool enabled = false;
    CheckedValue<Days> days;
};

struct Directory {
    CheckedValue<Path> path;
    CheckedValue<Label> label;
};

/// The commands by file extension.
struct Interpreters {
    std::map<std::wstring, Command> commands;
};

/// The settings file as written.
struct File {
    std::optional<CheckedValue<Path>> workDirectory;
    std::optional<CheckedValue<Path>> jobListFile;
    std::optional<CheckedValue<PathOrNone>> logFile;
    CheckedValue<LogLevel> logLevel;
    AutoDelete autoDeleteWorkFolder;
    std::vector<Directory> scenarioDirectories;
    CheckedValue<Culture> culture;
    CheckedValue<Culture> defaultCulture;
    std::optional<Paths> functionModules;
    std::optional<Paths> libraryDirectories;
    std::optional<CheckedValue<Path>> eventTransmitter;
    CheckedValue<EndpointAddress> transmitterName;
    std::optional<CheckedValue<Path>> stringResourceFile;
    std::optional<CheckedValue<Path>> scenarioRunner;
    std::optional<CheckedValue<Path>> scenarioApiDirectory;
    std::optional<Interpreters> interpreters;
    CheckedValue<GraceSeconds> cancelGraceSeconds;
    CheckedValue<LogLimit> scenarioLogLimitBytes;
    ParallelJobs parallelJobs;
};

} // namespace
} // namespace settings

namespace json {

template <>
struct Layout<settings::AutoDelete> {
    static constexpr auto members =
        std::make_tuple(Member{"enabled", &settings::AutoDelete::enabled}, Member{"days", &settings::AutoDelete::days});
};

template <>
struct Layout<settings::Directory> {
    static constexpr auto members = std::make_tuple(Member{"path", &settings::Directory::path, Presence::Required},
                                                    Member{"label", &settings::Directory::label});
};

template <>
struct ShapeOf<settings::Interpreters> {
    static Target Insert(void* object, std::string_view marked) {
        const std::wstring extension = text::FromTrustedWtf8(marked);
        const bool isExtension = extension.size() > 1 && extension.rfind(L'.') == 0 &&
                                 extension.find_first_of(L"/\\: ") == std::wstring::npos;
        if (!isExtension) {
            return {&badNameShape, object};
        }
        const auto [place, isNew] = static_cast<settings::Interpreters*>(object)->commands.try_emplace(extension);
        return isNew ? TargetOf(place->second) : Target();
    }
    static constexpr Shape badNameShape{.expected = L"as its name an extension with the dot, such as \".rb\""};
    static constexpr Shape shape{.expected = L"an object", .entry = Insert};
};

template <>
struct ShapeOf<settings::ParallelJobs> {
    [[nodiscard]] static bool ReadWord(void* object, std::string_view marked) {
        static_cast<settings::ParallelJobs*>(object)->value = settings::CoreCount();
        return marked == "auto";
    }
    [[nodiscard]] static bool ReadNumber(void* object, std::string_view digits) {
        std::int32_t& value = static_cast<settings::ParallelJobs*>(object)->value;
        return ParseWholeNumber(digits, value) && value >= 1 && value <= settings::mostParallelJobs;
    }
    static constexpr Shape shape{
        .expected = L"a whole number of jobs from 1 to 60, or \"auto\"", .text = ReadWord, .number = ReadNumber};
};

template <>
struct Layout<settings::File> {
    using File = settings::File;
    static constexpr auto members = std::make_tuple(
        Version(), Member{"workDirectory", &File::workDirectory}, Member{"jobListFile", &File::jobListFile},
        Member{"logFile", &File::logFile}, Member{"logLevel", &File::logLevel},
        Member{"autoDeleteWorkFolder", &File::autoDeleteWorkFolder},
        Member{"scenarioDirectories", &File::scenarioDirectories}, Member{"culture", &File::culture},
        Member{"defaultCulture", &File::defaultCulture}, Member{"functionModules", &File::functionModules},
        Member{"libraryDirectories", &File::libraryDirectories}, Member{"eventTransmitter", &File::eventTransmitter},
        Member{"transmitterName", &File::transmitterName}, Member{"stringResourceFile", &File::stringResourceFile},
        Member{"scenarioRunner", &File::scenarioRunner}, Member{"scenarioApiDirectory", &File::scenarioApiDirectory},
        Member{"interpreters", &File::interpreters}, Member{"cancelGraceSeconds", &File::cancelGraceSeconds},
        Member{"scenarioLogLimitBytes", &File::scenarioLogLimitBytes}, Member{"parallelJobs", &File::parallelJobs});
};

} // namespace json

namespace settings {
namespace {

/// Applies a file to the built-in settings; relative paths in it are resolved against its directory.
class Application {
public:
    Application(const std::wstring& path, Settings& changedSettings)
        : directory(platform::ParentDirectory(path)), changed(changedSettings) {
        changed.file = path;
    }

    void Apply(const File& file) {
        ApplyPath(file.workDirectory, changed.workDirectory);
        ApplyPath(file.jobListFile, changed.jobListFile);
        ApplyPath(file.logFile, changed.logFile);
        ApplyPath(file.eventTransmitter, changed.eventTransmitter);
        ApplyPath(file.stringResourceFile, changed.stringResourceFile);
        ApplyPath(file.scenarioRunner, changed.scenarioRunner);
        ApplyPath(file.scenarioApiDirectory, changed.scenarioApiDirectory);
        changed.logLevel = log_file::LevelNamed(file.logLevel.value).value_or(changed.logLevel);
        changed.autoDeleteWorkFolder = file.autoDeleteWorkFolder.enabled;
        changed.autoDeleteDays = file.autoDeleteWorkFolder.days.value;
        changed.transmitterName = file.transmitterName.value;
        changed.culture = file.culture.value;
        changed.defaultCulture = file.defaultCulture.value;
        changed.cancelGraceSeconds = file.cancelGraceSeconds.value;
        changed.scenarioLogLimitBytes = file.scenarioLogLimitBytes.value;
        changed.parallelJobs = file.parallelJobs.value;
        for (const Directory& scenarios : file.scenarioDirectories) {
            changed.scenarioDirectories.push_back({Resolved(scenarios.path.value), scenarios.label.value});
        }
        ApplyPaths(file.functionModules, changed.functionModules);
        ApplyPaths(file.libraryDirectories, changed.libraryDirectories);
        ApplyInterpreters(file.interpreters);
    }

private:
    std::wstring Resolved(const std::wstring& path) const {
        return path.empty() ? path : platform::ResolveAgainst(directory, path);
    }

    template <typename Rule>
    void ApplyPath(const std::optional<CheckedValue<Rule>>& path, std::wstring& setting) const {
        if (path) {
            setting = Resolved(path->value);
        }
    }

    void ApplyPaths(const std::optional<Paths>& paths, std::vector<std::wstring>& setting) const {
        if (!paths) {
            return;
        }
        setting.clear();
        for (const CheckedValue<Path>& path : *paths) {
            setting.push_back(Resolved(path.value));
        }
    }

    /// The file's commands extend or replace the built-in ones.
    void ApplyInterpreters(const std::optional<Interpreters>& interpreters) {
        if (!interpreters) {
            return;
        }
        for (const auto& [extension, command] : interpreters->commands) {
            std::vector<std::wstring>& parts = changed.interpreters[extension];
            parts.clear();
            for (const CheckedValue<CommandPart>& part : command) {
                parts.push_back(part.value);
            }
        }
    }

    const std::wstring directory;
    Settings& changed;
};

/// The first extension whose command is empty.
std::optional<std::wstring> FindEmptyCommand(const File& file) {
    if (file.interpreters) {
        for (const auto& [extension, command] : file.interpreters->commands) {
            if (command.empty()) {
                return extension;
            }
        }
    }
    return {};
}

} // namespace

Settings BuiltInSettings() {
    const std::wstring userData = platform::UserDataDirectory();
    const std::wstring data = platform::ResolveAgainst(userData.empty() ? platform::CurrentDirectory() : userData,
                                                       platform::applicationDirectoryName);
    const std::wstring programs = platform::ProgramDirectory();
    Settings settings;
    settings.workDirectory = data + L"\\work";
    settings.jobListFile = data + L"\\job_list.json";
    settings.logFile = data + L"\\controller.log";
    settings.scenarioRunner = programs + L"\\scenario_runner" + platform::programExtension;
    settings.functionModules = {programs + L"\\local_process" + platform::moduleExtension};
    settings.eventTransmitter = programs + L"\\local_socket" + platform::moduleExtension;
    settings.stringResourceFile = platform::ResolveAgainst(programs, L"..\\share\\common_controller\\strings.json");
    settings.scenarioApiDirectory = platform::ResolveAgainst(programs, L"..\\share\\common_controller\\scenario_api");
    settings.interpreters = {{L".rb", {L"ruby"}}};
    return settings;
}

bool ReadSettingsFile(const std::wstring& path, Settings& read, std::wstring& problem,
                      std::vector<std::wstring>& warnings) {
    File file;
    std::vector<std::wstring> unknownMembers;
    if (!json::ReadFile(path, largestFile, file, problem, &unknownMembers)) {
        return false;
    }
    for (const std::wstring& unknownMember : unknownMembers) {
        warnings.push_back(json::ProblemInFile(path, unknownMember));
    }
    if (const std::optional<std::wstring> extension = FindEmptyCommand(file)) {
        problem = platform::ToNativeText(path) + L": interpreters" + *extension +
                  L": expected a list that begins with a program, found an empty list";
        return false;
    }
    read = BuiltInSettings();
    Application(path, read).Apply(file);
    return true;
}

} // namespace settings
