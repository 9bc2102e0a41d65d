#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "services/log/LogLevel.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// The application's settings, one JSON file.
namespace settings {

/// A host waits for the processes of all running jobs at once; Windows waits for 64 handles at most.
inline constexpr std::int32_t mostParallelJobs = 60;

/// Every path is absolute.
struct Settings {
    /// The file that this was read from; empty for built-in defaults.
    std::wstring file;
    std::wstring workDirectory;
    std::wstring jobListFile;
    /// Empty: no log file.
    std::wstring logFile;
    /// Records below it are not written to the log file.
    log_file::Level logLevel = log_file::Level::Info;
    bool autoDeleteWorkFolder = false;
    std::int32_t autoDeleteDays = 30;
    std::vector<ScenarioDirectory> scenarioDirectories;
    std::wstring culture = L"en-US";
    std::wstring defaultCulture = L"en-US";
    /// Function modules in the order to load them.
    std::vector<std::wstring> functionModules;
    /// Where the libraries that the modules need are searched besides, before the system's places.
    std::vector<std::wstring> libraryDirectories;
    /// The module through which front ends and the host exchange events.
    std::wstring eventTransmitter;
    /// The name of the place where they meet: hosts with different job lists need different names.
    std::wstring transmitterName = L"default";
    /// The texts of the front ends, one section a culture.
    std::wstring stringResourceFile;
    /// The program that runs one scenario.
    std::wstring scenarioRunner;
    /// Holds the scenario API of each language in a subdirectory ("ruby").
    std::wstring scenarioApiDirectory;
    /// The command (program and first arguments) that runs a script, by extension with the dot (".rb").
    std::map<std::wstring, std::vector<std::wstring>> interpreters;
    /// How long a scenario may take to stop when it was asked to.
    std::int32_t cancelGraceSeconds = 5;
    /// How much of a scenario's output is kept.
    std::int64_t scenarioLogLimitBytes = 1048576;
    /// How many jobs a host runs at a time; 1 to `mostParallelJobs`.
    std::int32_t parallelJobs = 1;

    bool operator==(const Settings&) const = default;
};

/// Names the settings file, before all other places. An empty path goes back to these: the environment variable
/// CONTROLLER_SETTINGS_FILE, the user's configuration directory, built-in defaults.
CONTROLLER_API void UseFile(const std::wstring& path);

/// The settings in force; never null. Read anew when the file has changed. A broken file changes nothing: the error
/// goes to the log once for each state of the file, and the last good settings (at first the built-in ones) stay. One
/// that cannot be opened is tried again with each call. Any thread.
CONTROLLER_API std::shared_ptr<const Settings> Current();

/// As `Current`; and what a running host cannot change stays as it is now, until `UseFile`: the job list file, the log
/// file, the modules and the endpoint. Where the file says otherwise later, the log tells that it has no effect.
CONTROLLER_API std::shared_ptr<const Settings> FrozenForProcess();

/// The settings file that is looked at, whether it is there and can be read or not; empty where there is none to look
/// at.
CONTROLLER_API std::wstring FileInUse();

/// What is wrong with the settings file now, naming file, member and what was expected; empty when nothing is. For a
/// program that wants to refuse to start.
CONTROLLER_API std::wstring Problem();

/// The text of a settings file that says what `settings` say of a run: for a runner, while the file itself is broken.
CONTROLLER_API std::wstring CopyForRun(const Settings& settings);

} // namespace settings
