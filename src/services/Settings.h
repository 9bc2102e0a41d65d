#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "formats/Scheduling.h"
#include "formats/SlurmOptions.h"
#include "services/log/LogLevel.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// The application's settings, one JSON file.
namespace settings {

/// Permitted on Linux. A host waits for the processes of all running jobs at once, and Windows waits for fewer.
inline constexpr std::int32_t mostParallelJobs = 500;

/// Automatic deletion of old jobs; `days` is the age limit.
struct AutoDelete {
    bool enabled = false;
    std::int32_t days = 30;

    bool operator==(const AutoDelete&) const = default;
};

/// The commands (program and arguments) that a host runs at its events; an empty one: none.
struct HookCommands {
    std::vector<std::wstring> jobEnded;
    std::vector<std::wstring> jobFailed;
    std::vector<std::wstring> queueEmpty;

    bool operator==(const HookCommands&) const = default;
};

/// What becomes of the jobs of a host that has ended.
enum class AfterRestart {
    /// Waiting and interrupted jobs are cancelled.
    Cancel,
    /// Waiting jobs wait on; interrupted jobs are cancelled.
    Queued,
    /// Waiting jobs wait on; interrupted jobs are queued again.
    All
};

/// How jobs run on a Slurm cluster.
struct SlurmSettings : slurm::SlurmOptions {
    /// How long nothing may be seen of a job, or by the job of its waiter. Units: seconds.
    std::int32_t lostAfterSeconds = 60;

    bool operator==(const SlurmSettings&) const = default;
};

/// The web page of the queue.
struct WebSettings {
    /// The port of the server on this machine; 0: any free one.
    std::int32_t port = 0;
    /// The page shows the queue and changes nothing.
    bool readOnly = false;
    /// The address at which a reverse proxy makes the page reachable; empty: there is none.
    std::wstring publicAddress;
    /// The directories in which the page may look for input files.
    std::vector<std::wstring> inputDirectories;

    bool operator==(const WebSettings&) const = default;
};

/// The settings in force. All paths are absolute.
struct Settings {
    /// The file that the settings were read from; empty for the built-in defaults.
    std::wstring file;
    std::wstring workDirectory;
    std::wstring jobListFile;
    /// The log file; empty to write none.
    std::wstring logFile;
    /// Records below this level are not written to the log file.
    log_file::Level logLevel = log_file::Level::Info;
    AutoDelete autoDeleteWorkFolder;
    std::vector<ScenarioDirectory> scenarioDirectories;
    std::wstring culture = L"en-US";
    std::wstring defaultCulture = L"en-US";
    /// Function modules in the order to load them.
    std::vector<std::wstring> functionModules;
    /// Additional directories to search for the libraries of the modules, before those of the system.
    std::vector<std::wstring> libraryDirectories;
    /// The module through which front ends and the host exchange events.
    std::wstring eventTransmitter;
    /// The endpoint name for front ends and host; hosts with different job lists need different names.
    std::wstring transmitterName = L"default";
    /// The texts of the front ends, one section per culture.
    std::wstring stringResourceFile;
    /// The program that runs one scenario.
    std::wstring scenarioRunner;
    /// Contains the scenario API of each language in a subdirectory ("ruby").
    std::wstring scenarioApiDirectory;
    /// The command (program and first arguments) that runs a script, by file extension with the dot (".rb").
    std::map<std::wstring, std::vector<std::wstring>> interpreters;
    /// The time that a scenario has to stop after it was asked to.
    std::int32_t cancelGraceSeconds = 5;
    /// The maximum size of the output that is kept of a scenario.
    std::int64_t scenarioLogLimitBytes = 1048576;
    /// The maximum number of jobs that a host runs at a time; 1 to `mostParallelJobs`.
    std::int32_t parallelJobs = 1;
    HookCommands hooks;
    /// What is scarce, by name, and how much of it the running jobs of a host may take together.
    std::map<std::wstring, std::int64_t> resources;
    /// The waiting time that outweighs one step of priority.
    std::int32_t ageingMinutes = 60;
    AfterRestart afterRestart = AfterRestart::Cancel;
    SlurmSettings slurm;
    /// Whether runs describe what their results were made from.
    bool provenance = true;
    /// Whether jobs get the results of earlier ones with equal inputs, unless their request says otherwise.
    bool reuse = false;
    /// For jobs whose requests say nothing about it.
    RunRules jobDefaults;
    /// The versions of tools that results depend on, by name; results of other versions are not reused.
    std::map<std::wstring, std::wstring> toolVersions;
    WebSettings web;

    bool operator==(const Settings&) const = default;
};

/// Sets the settings file; it has precedence over all other sources. An empty path restores the default order: the
/// environment variable CONTROLLER_SETTINGS_FILE, the user's configuration directory, built-in defaults.
CONTROLLER_API void UseFile(const std::wstring& path);

/// Returns the settings in force; never null. Reads the file again when it has changed. If the file is invalid, the
/// error is logged once per state of the file, and the last valid settings (initially the built-in ones) stay in force.
/// A file that cannot be opened is retried at every call. Threads: any.
CONTROLLER_API std::shared_ptr<const Settings> Current();

/// Returns the settings as `Current` does, and freezes the members that a running host cannot change until `UseFile` is
/// called: job list file, log file, modules and endpoint. A later difference in the file is logged as having no effect.
CONTROLLER_API std::shared_ptr<const Settings> FrozenForProcess();

/// Returns the settings file that is checked for changes, even if it does not exist or cannot be read; empty if none
/// is.
CONTROLLER_API std::wstring FileInUse();

/// Returns what is wrong with the settings file now, with file, member and the expected value; empty if nothing is.
/// Used by programs that refuse to start with invalid settings.
CONTROLLER_API std::wstring Problem();

/// Returns the text of a settings file with these settings: to show them, and for runs while the file itself is
/// invalid.
CONTROLLER_API std::wstring Serialize(const Settings& settings);

/// Reads a settings file without using it. Appends one text per unknown member to `warnings`. On failure returns false,
/// sets `problem` to file, position, member and what was expected, and leaves `read` alone.
[[nodiscard]] CONTROLLER_API bool CheckFile(const std::wstring& path, Settings& read, std::wstring& problem,
                                            std::vector<std::wstring>& warnings);

/// Returns the names of all members of a settings file; those of objects inside, and of objects in lists, with dots:
/// "hooks.jobEnded".
CONTROLLER_API std::vector<std::wstring> MemberNames();

} // namespace settings
