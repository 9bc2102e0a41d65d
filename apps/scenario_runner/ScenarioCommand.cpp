#include "scenario_runner/ScenarioCommand.h"

#include <algorithm>
#include <array>

#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace scenario_runner {
namespace {

using Words = std::vector<std::wstring>;

/// A language with a scenario API in `scenarioApiDirectory`.
struct ScriptLanguage {
    const wchar_t* name;
    const wchar_t* extension;
    const wchar_t* apiDirectory;
    /// A file by which the API is recognised.
    const wchar_t* apiFile;
    /// The variable with the directories in which the interpreter searches.
    const wchar_t* pathVariable;
    /// Variables that the user may set differently, with the value 1.
    std::vector<const wchar_t*> switches;
};

const ScriptLanguage* LanguageOf(const std::wstring& script) {
    // Without these two Python on Windows reads and writes files in the code page, and what a scenario has printed
    // reaches the log at its end only.
    static const std::array<ScriptLanguage, 2> languages{
        {{L"Ruby", L".rb", L"ruby", L"ruby\\controller_scenario.rb", L"RUBYLIB", {}},
         {L"Python",
          L".py",
          L"python",
          L"python\\controller_scenario\\__init__.py",
          L"PYTHONPATH",
          {L"PYTHONUTF8", L"PYTHONUNBUFFERED"}}}};
    const auto* const found = std::find_if(languages.begin(), languages.end(), [&](const ScriptLanguage& language) {
        return platform::HasExtension(script, language.extension);
    });
    return found == languages.end() ? nullptr : found;
}

std::wstring Extension(const std::wstring& path) {
    const std::wstring name = platform::FileName(path);
    const std::size_t dot = name.rfind(L'.');
    return dot == std::wstring::npos ? L"" : name.substr(dot);
}

std::wstring InSettings(const settings::Settings& settings) {
    return settings.file.empty() ? L"the settings" : platform::ToNativeText(settings.file);
}

/// Chooses one command: the result, or the reason why there is none.
class CommandResolver {
public:
    CommandResolver(const settings::Settings& usedSettings, const scenario_manifest::ScenarioManifest& usedManifest,
                    const ScenarioPaths& usedPaths, const ScenarioEnvironment& usedEnvironment)
        : settings(usedSettings), manifest(usedManifest), paths(usedPaths), environment(usedEnvironment) {}

    bool Make() {
        if (!paths.packageDirectory.empty()) {
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

    std::wstring ScenarioName() const { return platform::ToNativeText(paths.scenarioPath); }

    bool ChooseScript() {
        const auto found =
            std::find_if(settings.interpreters.begin(), settings.interpreters.end(),
                         [&](const auto& entry) { return platform::HasExtension(paths.scenarioPath, entry.first); });
        if (found == settings.interpreters.end() || found->second.empty()) {
            const std::wstring extension = Extension(paths.scenarioPath);
            return Fail(L"No interpreter is known for " + ScenarioName() + L": add one for \"" + extension +
                        L"\" to \"interpreters\" in " + InSettings(settings) + L".");
        }
        if (!environment.exists(paths.scenarioPath)) {
            return Fail(L"The scenario " + ScenarioName() + L" does not exist any more.");
        }
        return Interpret(found->second, paths.scenarioPath);
    }

    /// Finds a file of the package; rejects paths outside of it.
    bool FindPackaged(const std::wstring& name, std::wstring& path) {
        path = platform::ResolveAgainst(paths.packageDirectory, name);
        const std::wstring directory = platform::ResolveAgainst(paths.packageDirectory, L".") + L'\\';
        return (path.starts_with(directory) && environment.exists(path)) ||
               Fail(L"The package " + ScenarioName() + L" names \"" + name +
                    L"\" in its manifest, but holds no such file.");
    }

    bool ChooseExecutable() {
        if (!FindPackaged(manifest.executable, command.program)) {
            return false;
        }
        if (!environment.findProgram(command.program)) {
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
        const std::optional<std::wstring> program = environment.findProgram(words.front());
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
        command.arguments.push_back(paths.runInfoPath);
        command.environment.emplace_back(run_protocol::runInfoVariable, paths.runInfoPath);
        if (const ScriptLanguage* const language = LanguageOf(script)) {
            OfferApi(*language);
        }
    }

    void OfferApi(const ScriptLanguage& language) {
        command.environment.emplace_back(language.pathVariable, SearchPath(language));
        for (const wchar_t* const name : language.switches) {
            if (Variable(name).empty()) {
                command.environment.emplace_back(name, L"1");
            }
        }
        command.apiProblem = ApiProblem(language);
    }

    std::wstring ApiProblem(const ScriptLanguage& language) const {
        const std::wstring file = platform::ResolveAgainst(settings.scenarioApiDirectory, language.apiFile);
        return environment.exists(file)
                   ? L""
                   : std::wstring(L"The scenario API for ") + language.name + L" was not found: there is no file " +
                         platform::ToNativeText(file) + L"; name its folder as \"scenarioApiDirectory\" in " +
                         InSettings(settings) + L".";
    }

    /// The directory of the API, before those that the user has set.
    std::wstring SearchPath(const ScriptLanguage& language) const {
        const std::wstring api =
            platform::ToNativeText(platform::ResolveAgainst(settings.scenarioApiDirectory, language.apiDirectory));
        const std::wstring others = Variable(language.pathVariable);
        return others.empty() ? api : api + platform::pathListSeparator + others;
    }

    std::wstring Variable(const std::wstring& name) const {
        return environment.getEnvironment(name).value_or(std::wstring());
    }

    const settings::Settings& settings;
    const scenario_manifest::ScenarioManifest& manifest;
    const ScenarioPaths& paths;
    const ScenarioEnvironment& environment;
};

} // namespace

bool ChooseCommand(const settings::Settings& settings, const scenario_manifest::ScenarioManifest& manifest,
                   const ScenarioPaths& paths, const ScenarioEnvironment& environment, ScenarioCommand& command,
                   std::wstring& problem) {
    CommandResolver resolver(settings, manifest, paths, environment);
    if (!resolver.Make()) {
        problem = resolver.problem;
        return false;
    }
    command = resolver.command;
    return true;
}

} // namespace scenario_runner
