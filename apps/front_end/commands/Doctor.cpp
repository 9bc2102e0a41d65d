#include <algorithm>
#include <initializer_list>
#include <memory>
#include <set>
#include <utility>

#include "formats/JobListFile.h"
#include "front_end/commands/Commands.h"
#include "front_end/commands/HostStates.h"
#include "front_end/commands/LanguageChecks.h"
#include "front_end/output/CheckReport.h"
#include "front_end/output/StateJson.h"
#include "modules/StartChecks.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"

namespace front_end::commands {
namespace {

/// Runs the checks one after another and keeps their results.
class Examination {
public:
    explicit Examination(CommandContext& commandContext) : context(commandContext), settings(settings::Current()) {}

    std::vector<CheckResult> Run() {
        CheckVersions();
        CheckSettings();
        CheckLanguagesInUse(context, *settings, results);
        CheckModulesAndPrograms();
        CheckDirectories();
        CheckPermissions();
        CheckHost();
        return std::move(results);
    }

private:
    void Fine(const wchar_t* name, const std::wstring& message) { results.push_back({name, true, message}); }
    void Wrong(const wchar_t* name, const std::wstring& message) { results.push_back({name, false, message}); }
    std::wstring Format(const wchar_t* key, std::initializer_list<std::wstring> values) const {
        return context.texts.Format(key, values);
    }

    void CheckVersions() {
        const std::wstring own = L"controller_host " CONTROLLER_VERSION;
        const std::wstring host = context.host.HostProgramVersion();
        if (host == own) {
            Fine(L"versions", Format(L"Doctor/Versions", {L"cadjobs " CONTROLLER_VERSION, host}));
        } else {
            Wrong(L"versions", Format(L"Doctor/OtherVersion", {own, host}));
        }
    }

    void CheckSettings() {
        const std::wstring problem = settings::Problem();
        const std::wstring file = platform::ToNativeText(settings->file);
        if (!problem.empty()) {
            Wrong(L"settings", Format(L"Doctor/Settings", {problem}));
        } else {
            Fine(L"settings", file.empty() ? context.texts.Get(L"Doctor/BuiltInSettings") : file);
        }
    }

    void CheckModulesAndPrograms() {
        const std::vector<std::wstring> problems = start_checks::Problems(*settings);
        for (const std::wstring& problem : problems) {
            Wrong(L"programs", problem);
        }
        if (problems.empty()) {
            Fine(L"programs", context.texts.Get(L"Doctor/Programs"));
        }
        const std::wstring transmitter = platform::ToNativeText(settings->eventTransmitter);
        if (context.host.Transmitter() == nullptr) {
            Wrong(L"transmitter", Format(L"Errors/NoTransmitter", {transmitter, context.host.TransmitterProblem()}));
        } else {
            Fine(L"transmitter", transmitter);
        }
    }

    /// The directory, or the nearest one above it that exists: the host creates what is missing.
    static std::wstring ExistingPart(std::wstring directory) {
        while (!directory.empty() && !platform::Exists(directory)) {
            const std::wstring parent = platform::ParentDirectory(directory);
            directory = parent == directory ? std::wstring() : parent;
        }
        return directory;
    }

    void CheckWritable(const std::wstring& directory) {
        const std::wstring existing = ExistingPart(directory);
        const std::wstring name = L"cadjobs-doctor.tmp";
        const platform::Error result = platform::CreateEmptyFileIn(existing, name);
        if (!result) {
            Wrong(L"directories", Format(L"Doctor/NotWritable", {platform::ToNativeText(directory), result.Text()}));
            return;
        }
        (void)platform::RemoveFile(existing + L"\\" + name);
        Fine(L"directories", platform::ToNativeText(directory));
    }

    void CheckDirectories() {
        std::set<std::wstring> written = {settings->workDirectory, platform::ParentDirectory(settings->jobListFile)};
        if (!settings->logFile.empty()) {
            written.insert(platform::ParentDirectory(settings->logFile));
        }
        for (const std::wstring& directory : written) {
            CheckWritable(directory);
        }
        for (const ScenarioDirectory& directory : settings->scenarioDirectories) {
            const std::wstring native = platform::ToNativeText(directory.path);
            if (platform::IsDirectory(directory.path)) {
                Fine(L"scenarios", native);
            } else {
                Wrong(L"scenarios", Format(L"Doctor/NoScenarioDirectory", {native}));
            }
        }
    }

    void CheckPermissions() {
        bool areFine = true;
        for (const std::wstring& file : {settings->file, settings->jobListFile}) {
            if (!file.empty() && platform::Exists(file) && platform::IsWorldWritable(file)) {
                Wrong(L"permissions", Format(L"Doctor/WorldWritable", {platform::ToNativeText(file)}));
                areFine = false;
            }
        }
        if (areFine) {
            Fine(L"permissions", context.texts.Get(L"Doctor/Permissions"));
        }
    }

    void CheckHost() {
        const std::wstring elsewhere = context.host.HostElsewhere();
        if (elsewhere.empty()) {
            Fine(L"host", HostLine(context));
        } else {
            Wrong(L"host", Format(L"Errors/HostElsewhere", {elsewhere, context.host.Place()}));
        }
        for (const std::wstring& file : job_list_file::KeptAside(settings->jobListFile)) {
            Wrong(L"host", Format(L"Notes/DamagedList", {platform::ToNativeText(file)}));
        }
    }

    CommandContext& context;
    std::shared_ptr<const settings::Settings> settings;
    std::vector<CheckResult> results;
};

} // namespace

ExitCode Doctor(CommandContext& context, const Command& command) {
    return ReportChecks(context, Examination(context).Run(), command.asJson);
}

} // namespace front_end::commands
