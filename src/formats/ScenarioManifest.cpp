#include "formats/ScenarioManifest.h"

#include <cstddef>
#include <string>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Boundary.h"
#include "formats/ManifestFile.h"
#include "formats/ScenarioPackage.h"
#include "formats/json/Reading.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace scenario_manifest {
namespace {

using scenario_package::Package;

constexpr std::size_t largestManifest = std::size_t{1} << 20;
constexpr auto manifestName = "manifest.json";

std::wstring ManifestIn(const Package& package) {
    return platform::ToNativeText(package.Path()) + L": manifest.json, ";
}

void Warn(const std::wstring& place, const std::vector<std::wstring>& warnings) {
    const std::wstring beginning = L"A part of the scenario's description has no effect: " + place;
    for (const std::wstring& warning : warnings) {
        ControllerCSWrapper::WriteWarnLog(beginning + warning);
    }
}

bool Has(const Package& package, const std::wstring& name) {
    return package.HasFile(text::ToUtf8(name));
}

/// On Windows "bin/check" stands for "bin/check.exe", so that one package can have a program for each system.
void ChooseProgram(const Package& package, ScenarioManifest& manifest) {
    const std::wstring program = manifest.executable + platform::programExtension;
    if (!manifest.executable.empty() && Has(package, program)) {
        manifest.executable = program;
    }
}

bool RequireFile(const Package& package, const ScenarioManifest& manifest, std::wstring& problem) {
    const bool isProgram = manifest.entryPoint.empty();
    const std::wstring& name = isProgram ? manifest.executable : manifest.entryPoint;
    if (Has(package, name)) {
        return true;
    }
    problem = ManifestIn(package) + L"the package has no file \"" + name + L"\"" +
              (isProgram ? L", the program for this system" : L"");
    return false;
}

bool ReadBeside(const std::wstring& script, ScenarioManifest& manifest, std::wstring& problem) {
    const std::wstring path = ManifestBeside(script);
    ScenarioManifest read;
    if (platform::Exists(path)) {
        std::string json;
        std::vector<std::wstring> warnings;
        if (!json::LoadFile(path, largestManifest, json, problem)) {
            return false;
        }
        if (!ParseScriptManifest(json, read, problem, warnings)) {
            problem = json::ProblemInFile(path, problem);
            return false;
        }
        Warn(platform::ToNativeText(path) + L", ", warnings);
    }
    manifest = read;
    return true;
}

} // namespace

std::wstring ManifestBeside(const std::wstring& script) {
    return boundary::Guard("ManifestBeside", [&] {
        const std::size_t nameBegin = script.size() - platform::FileName(script).size();
        const std::size_t dot = script.rfind(L'.');
        const bool hasExtension = dot != std::wstring::npos && dot > nameBegin;
        return (hasExtension ? script.substr(0, dot) : script) + L".scenario.json";
    });
}

bool IsPackage(const std::wstring& scenarioPath) {
    return platform::HasExtension(platform::FileName(scenarioPath), L".esa");
}

bool ReadFrom(const Package& package, ScenarioManifest& manifest, std::wstring& problem) {
    std::string json;
    ScenarioManifest read;
    std::vector<std::wstring> warnings;
    if (!package.ReadEntry(manifestName, largestManifest, json, problem)) {
        return false;
    }
    if (!ParsePackageManifest(json, read, problem, warnings)) {
        problem = ManifestIn(package) + problem;
        return false;
    }
    ChooseProgram(package, read);
    if (!RequireFile(package, read, problem)) {
        return false;
    }
    Warn(ManifestIn(package), warnings);
    manifest = read;
    return true;
}

bool ReadFor(const std::wstring& scenarioPath, ScenarioManifest& manifest, std::wstring& problem) {
    if (!IsPackage(scenarioPath)) {
        return ReadBeside(scenarioPath, manifest, problem);
    }
    Package package;
    return package.Open(scenarioPath, problem) && ReadFrom(package, manifest, problem);
}

} // namespace scenario_manifest
