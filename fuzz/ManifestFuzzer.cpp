#include <algorithm>
#include <string>
#include <vector>

#include "formats/ManifestFile.h"
#include "formats/json/RecordLayouts.h"
#include "formats/json/Writing.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "text/StrictUtf8.h"

namespace {

using scenario_manifest::ScenarioManifest;
using Parser = bool (*)(const std::string&, ScenarioManifest&, std::wstring&, std::vector<std::wstring>&);

constexpr std::size_t mostWarnings = 20;

bool Parse(Parser parser, const std::string& json, ScenarioManifest& manifest) {
    ScenarioManifest before;
    before.displayName = before.interpreter = L"before";
    before.timeLimitSeconds = 7;
    std::wstring problem;
    std::vector<std::wstring> warnings = {L"before"};
    manifest = before;
    const bool isRead = parser(json, manifest, problem, warnings);
    fuzz::Require(isRead || manifest == before, "a refused text leaves the manifest as it was");
    fuzz::Require(isRead == problem.empty(), "a refusal, and nothing else, says why");
    fuzz::Require(warnings.at(0) == L"before" && warnings.size() <= 1 + mostWarnings, "few warnings are appended");
    return isRead;
}

bool IsNumberText(const std::wstring& text) {
    return text.find_first_not_of(L"+-.0123456789eE") == std::wstring::npos;
}

void CheckValues(const ScenarioManifest& manifest) {
    for (const ScenarioParameterSetInfo& set : manifest.parameterSets) {
        for (const ScenarioParameter& parameter : set.parameters) {
            const auto& allowed = parameter.allowedValues;
            const bool areNumbers =
                IsNumberText(parameter.defaultValue) && std::all_of(allowed.begin(), allowed.end(), IsNumberText);
            fuzz::Require(areNumbers || (parameter.type != L"number" && parameter.type != L"integer"),
                          "a number has digits");
        }
    }
}

void CheckLimits(const ScenarioManifest& manifest) {
    fuzz::Require(manifest.timeLimitSeconds >= 0 && manifest.timeLimitSeconds <= 604800, "the time limit is one");
    fuzz::Require(!manifest.successExitCodes.empty() && manifest.successExitCodes.size() <= 256, "some codes succeed");
    fuzz::Require(manifest.parameterSets.size() <= 100 && manifest.inputs.size() <= 100, "lists are short");
    CheckValues(manifest);
}

void CheckCanRun(const ScenarioManifest& manifest) {
    const bool runsScript = !manifest.entryPoint.empty() && !manifest.interpreter.empty();
    fuzz::Require(!manifest.displayName.empty(), "a package has a name to show");
    fuzz::Require(runsScript != !manifest.executable.empty(), "a package runs in one way");
    for (const std::wstring& path : {manifest.entryPoint, manifest.executable}) {
        fuzz::Require(path.find_first_of(L"\\:") == std::wstring::npos && !path.starts_with(L'/') &&
                          !(path + L'/').starts_with(L"../") &&
                          (L'/' + path + L'/').find(L"/../") == std::wstring::npos,
                      "what runs lies in the package");
    }
}

template <typename Value>
void AppendMember(const wchar_t* name, const Value& value, std::wstring& json) {
    json += json.size() > 1 ? L"," : L"";
    json::AppendName(name, json);
    json::Append(value, json);
}

void AppendUnlessEmpty(const wchar_t* name, const std::wstring& text, std::wstring& json) {
    if (!text.empty()) {
        AppendMember(name, text, json);
    }
}

std::wstring Written(const ScenarioManifest& manifest) {
    std::wstring json = L"{";
    AppendMember(L"timeLimitSeconds", manifest.timeLimitSeconds, json);
    AppendMember(L"successExitCodes", manifest.successExitCodes, json);
    AppendMember(L"displayName", manifest.displayName, json);
    AppendMember(L"inputs", manifest.inputs, json);
    AppendUnlessEmpty(L"entryPoint", manifest.entryPoint, json);
    AppendUnlessEmpty(L"interpreter", manifest.interpreter, json);
    AppendUnlessEmpty(L"executable", manifest.executable, json);
    AppendMember(L"parameterSets", manifest.parameterSets, json);
    return json + L"}";
}

void CheckWritten(const ScenarioManifest& manifest) {
    std::string utf8;
    std::size_t badAt = 0;
    ScenarioManifest again;
    fuzz::Require(text::EncodeUtf8(Written(manifest), utf8, badAt), "JSON is characters");
    if (Parse(scenario_manifest::ParsePackageManifest, utf8, again)) {
        fuzz::Require(again == manifest, "a manifest is read as it was written");
    }
}

} // namespace

/// Reads the input as the manifest of a package and as the description of a script.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(fuzz::BytesOf(data, size));
    ScenarioManifest manifest;
    if (Parse(scenario_manifest::ParseScriptManifest, bytes, manifest)) {
        CheckLimits(manifest);
    }
    if (Parse(scenario_manifest::ParsePackageManifest, bytes, manifest)) {
        CheckLimits(manifest);
        CheckCanRun(manifest);
        CheckWritten(manifest);
    }
    return 0;
}
