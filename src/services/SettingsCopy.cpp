#include "services/Settings.h"

#include <algorithm>

#include "formats/json/SchedulingLayouts.h"
#include "formats/json/Writing.h"
#include "platform/files/NativePath.h"

namespace settings {
namespace {

template <typename Value>
void AppendMember(std::wstring_view name, const Value& value, std::wstring& json) {
    if (json.back() != L'{') {
        json += L',';
    }
    json::AppendName(name, json);
    json::Append(value, json);
}

template <typename Value>
void AppendUnlessEmpty(std::wstring_view name, const Value& value, std::wstring& json) {
    if (value != Value()) {
        AppendMember(name, value, json);
    }
}

void AppendSlurm(const SlurmSettings& slurm, std::wstring& json) {
    json += L",\"slurm\":{";
    AppendMember(L"lostAfterSeconds", slurm.lostAfterSeconds, json);
    AppendUnlessEmpty(L"partition", slurm.partition, json);
    AppendUnlessEmpty(L"account", slurm.account, json);
    AppendUnlessEmpty(L"cpus", slurm.cpus, json);
    AppendUnlessEmpty(L"memoryMegabytes", slurm.memoryMegabytes, json);
    AppendUnlessEmpty(L"minutes", slurm.minutes, json);
    AppendUnlessEmpty(L"options", slurm.options, json);
    json += L"}";
}

std::vector<std::wstring> Native(std::vector<std::wstring> paths) {
    std::transform(paths.begin(), paths.end(), paths.begin(), platform::ToNativeText);
    return paths;
}

void AppendPlaces(const Settings& settings, std::wstring& json) {
    AppendMember(L"workDirectory", platform::ToNativeText(settings.workDirectory), json);
    AppendMember(L"jobListFile", platform::ToNativeText(settings.jobListFile), json);
    AppendMember(L"logFile", platform::ToNativeText(settings.logFile), json);
    AppendMember(L"functionModules", Native(settings.functionModules), json);
    AppendMember(L"libraryDirectories", Native(settings.libraryDirectories), json);
    AppendMember(L"eventTransmitter", platform::ToNativeText(settings.eventTransmitter), json);
    AppendMember(L"stringResourceFile", platform::ToNativeText(settings.stringResourceFile), json);
    AppendMember(L"scenarioRunner", platform::ToNativeText(settings.scenarioRunner), json);
    AppendMember(L"scenarioApiDirectory", platform::ToNativeText(settings.scenarioApiDirectory), json);
}

void AppendAutoDelete(const AutoDelete& autoDelete, std::wstring& json) {
    json += L",\"autoDeleteWorkFolder\":{";
    AppendMember(L"enabled", autoDelete.enabled, json);
    AppendMember(L"days", autoDelete.days, json);
    json += L"}";
}

void AppendDirectories(const std::vector<ScenarioDirectory>& directories, std::wstring& json) {
    json += L",\"scenarioDirectories\":[";
    for (const ScenarioDirectory& directory : directories) {
        json += json.back() == L'[' ? L"{" : L",{";
        AppendMember(L"path", platform::ToNativeText(directory.path), json);
        AppendMember(L"label", directory.label, json);
        json += L"}";
    }
    json += L"]";
}

void AppendHooks(const HookCommands& hooks, std::wstring& json) {
    json += L",\"hooks\":{";
    AppendMember(L"jobEnded", hooks.jobEnded, json);
    AppendMember(L"jobFailed", hooks.jobFailed, json);
    AppendMember(L"queueEmpty", hooks.queueEmpty, json);
    json += L"}";
}

void AppendWeb(const WebSettings& web, std::wstring& json) {
    json += L",\"web\":{";
    AppendMember(L"port", web.port, json);
    AppendMember(L"readOnly", web.readOnly, json);
    AppendMember(L"publicAddress", web.publicAddress, json);
    AppendMember(L"inputDirectories", Native(web.inputDirectories), json);
    json += L"}";
}

const wchar_t* NameOf(AfterRestart value) {
    return value == AfterRestart::All ? L"all" : value == AfterRestart::Queued ? L"queued" : L"cancel";
}

} // namespace

std::wstring Serialize(const Settings& settings) {
    std::wstring json = L"{";
    AppendMember(L"version", 1, json);
    AppendPlaces(settings, json);
    AppendMember(L"logLevel", std::wstring(log_file::NameOf(settings.logLevel)), json);
    AppendMember(L"culture", settings.culture, json);
    AppendMember(L"defaultCulture", settings.defaultCulture, json);
    AppendMember(L"transmitterName", settings.transmitterName, json);
    AppendMember(L"cancelGraceSeconds", settings.cancelGraceSeconds, json);
    AppendMember(L"scenarioLogLimitBytes", settings.scenarioLogLimitBytes, json);
    AppendMember(L"parallelJobs", settings.parallelJobs, json);
    AppendMember(L"resources", settings.resources, json);
    AppendMember(L"ageingMinutes", settings.ageingMinutes, json);
    AppendMember(L"afterRestart", std::wstring(NameOf(settings.afterRestart)), json);
    AppendMember(L"provenance", settings.provenance, json);
    AppendMember(L"reuse", settings.reuse, json);
    AppendMember(L"toolVersions", settings.toolVersions, json);
    AppendMember(L"interpreters", settings.interpreters, json);
    AppendMember(L"jobDefaults", settings.jobDefaults, json);
    AppendAutoDelete(settings.autoDeleteWorkFolder, json);
    AppendDirectories(settings.scenarioDirectories, json);
    AppendHooks(settings.hooks, json);
    AppendSlurm(settings.slurm, json);
    AppendWeb(settings.web, json);
    return json + L"}";
}

} // namespace settings
