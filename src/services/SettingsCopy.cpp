#include "services/Settings.h"

#include "formats/json/Writing.h"

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

} // namespace

std::wstring CopyForRun(const Settings& settings) {
    std::wstring json = L"{";
    AppendMember(L"version", 1, json);
    AppendMember(L"logFile", settings.logFile, json);
    AppendMember(L"logLevel", std::wstring(log_file::NameOf(settings.logLevel)), json);
    AppendMember(L"scenarioRunner", settings.scenarioRunner, json);
    AppendMember(L"scenarioApiDirectory", settings.scenarioApiDirectory, json);
    AppendMember(L"cancelGraceSeconds", settings.cancelGraceSeconds, json);
    AppendMember(L"scenarioLogLimitBytes", settings.scenarioLogLimitBytes, json);
    AppendMember(L"provenance", settings.provenance, json);
    AppendMember(L"toolVersions", settings.toolVersions, json);
    json += L",\"interpreters\":{";
    for (const auto& [extension, command] : settings.interpreters) {
        AppendMember(extension, command, json);
    }
    json += L"}";
    AppendSlurm(settings.slurm, json);
    return json + L"}";
}

} // namespace settings
