#include "scenario_runner/ScenarioCommand.h"

#include <algorithm>

#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace scenario_runner {
namespace {

using Words = std::vector<std::wstring>;

constexpr const wchar_t* rubyExtension = L".rb";
constexpr const wchar_t* rubyApiDirectory = L"ruby";
constexpr const wchar_t* rubyApiFile = L"ruby\\controller_scenario.rb";
constexpr const wchar_t* rubyPathVariable = L"RUBYLIB";

std::wstring Extension(const std::wstring& path) {
    const std::wstring name = platform::FileName(path);
    const std::size_t dot = name.rfind(L'.');
    return dot == std::wstring::npos ? L"" : name.substr(dot);
}

std::wstring InSettings(const settings::Settings& settings) {
    return settings.file.empty() ? L"the settings" : platform::ToNativeText(settings.file);
}

/// Chooses one command: the result, or the reason why there is none.
class Choice {
public:
    Choice(const settings::Settings& usedSettings, const scenario_manifest::ScenarioManifest& usedManifest,
           const ScenarioPlace& usedPlace, const ScenarioSurroundings& usedSurroundings)
        : settings(usedSettings), manifest(usedManifest), place(usedPlace), surroundings(usedSurroundings) {}

    bool Make() {
        if (!place.packageDirectory.empty()) {
            return manifest.executable.empty() ? ChoosePackagedScript() : ChooseExecutable();
        }
        return ChooseScript();
    }

    ScenarioCommand command;
    std::wstring problem;

private:
    bool Fail(const std::wstring& what) {
        problem = what;
        return false;
    }

    std::wstring ScenarioName() const { return platform::ToNativeText(place.scenarioPath); }

    bool ChooseScript() {
        const auto found =
            std::find_if(settings.interpreters.begin(), settings.interpreters.end(),
                         [&](const auto& entry) { return platform::HasExtension(place.scenarioPath, entry.first); });
        if (found == settings.interpreters.end() || found->second.empty()) {
            const std::wstring extension = Extension(place.scenarioPath);
            return Fail(L"No interpreter is known for " + ScenarioName() + L": add one for \"" + extension +
                        L"\" to \"interpreters\" in " + InSettings(settings) + L".");
        }
        if (!surroundings.exists(place.scenarioPath)) {
            return Fail(L"The scenario " + ScenarioName() + L" does not exist any more.");
        }
        return Interpret(found->second, place.scenarioPath);
    }

    /// Finds a file of the package; rejects paths outside of it.
    bool FindPackaged(const std::wstring& name, std::wstring& path) {
        path = platform::ResolveAgainst(place.packageDirectory, name);
        const std::wstring directory = platform::ResolveAgainst(place.packageDirectory, L".") + L'\\';
        return (path.starts_with(directory) && surroundings.exists(path)) ||
               Fail(L"The package " + ScenarioName() + L" names \"" + name +
                    L"\" in its manifest, but holds no such file.");
    }

    bool ChooseExecutable() {
        if (!FindPackaged(manifest.executable, command.program)) {
            return false;
        }
        if (!surroundings.findProgram(command.program)) {
            return Fail(L"The package " + ScenarioName() + L" names \"" + manifest.executable +
                        L"\" as its program, which this system cannot run.");
        }
        Finish(command.program);
        return true;
    }

    bool ChoosePackagedScript() {
        std::wstring script;
        return FindPackaged(manifest.entryPoint, script) && Interpret(CommandFor(manifest.interpreter), script);
    }

    /// A matching interpreter in the settings has precedence: it may be outside of PATH or have options.
    Words CommandFor(const std::wstring& interpreter) const {
        for (const auto& [extension, words] : settings.interpreters) {
            const std::wstring name = words.empty() ? L"" : platform::FileName(words.front());
            if (platform::SameName(name, interpreter) ||
                platform::SameName(name, interpreter + platform::programExtension)) {
                return words;
            }
        }
        return {interpreter};
    }

    bool Interpret(const Words& words, const std::wstring& script) {
        const std::optional<std::wstring> program = surroundings.findProgram(words.front());
        if (!program) {
            return Fail(L"The interpreter \"" + words.front() + L"\" for " + ScenarioName() +
                        L" was not found: install it, or name its program under \"interpreters\" in " +
                        InSettings(settings) + L".");
        }
        command.program = *program;
        command.interpreter = words;
        command.arguments.assign(words.begin() + 1, words.end());
        command.arguments.push_back(platform::ToNativeText(script));
        Finish(script);
        return true;
    }

    /// Adds the argument and variables that every scenario gets.
    void Finish(const std::wstring& script) {
        command.arguments.push_back(place.runInfoPath);
        command.environment.emplace_back(run_protocol::runInfoVariable, place.runInfoPath);
        if (platform::HasExtension(script, rubyExtension)) {
            command.environment.emplace_back(rubyPathVariable, RubyPath());
            command.apiProblem = ApiProblem();
        }
    }

    std::wstring ApiProblem() const {
        const std::wstring file = platform::ResolveAgainst(settings.scenarioApiDirectory, rubyApiFile);
        return surroundings.exists(file)
                   ? L""
                   : L"The scenario API for Ruby was not found: there is no file " + platform::ToNativeText(file) +
                         L"; name its folder as \"scenarioApiDirectory\" in " + InSettings(settings) + L".";
    }

    std::wstring RubyPath() const {
        const std::wstring api =
            platform::ToNativeText(platform::ResolveAgainst(settings.scenarioApiDirectory, rubyApiDirectory));
        const std::wstring others = surroundings.getEnvironment(rubyPathVariable).value_or(std::wstring());
        return others.empty() ? api : api + platform::pathListSeparator + others;
    }

    const settings::Settings& settings;
    const scenario_manifest::ScenarioManifest& manifest;
    const ScenarioPlace& place;
    const ScenarioSurroundings& surroundings;
};

} // namespace

bool ChooseCommand(const settings::Settings& settings, const scenario_manifest::ScenarioManifest& manifest,
                   const ScenarioPlace& place, const ScenarioSurroundings& surroundings, ScenarioCommand& command,
                   std::wstring& problem) {
    Choice choice(settings, manifest, place, surroundings);
    if (!choice.Make()) {
        problem = choice.problem;
        return false;
    }
    command = choice.command;
    return true;
}

} // namespace scenario_runner
