#include "cadjobs/scenarios/ScenarioCommands.h"

#include <algorithm>
#include <sstream>

#include "CommonControllerLib/PathFuncs.h"
#include "cadjobs/scenarios/DirectoryFiles.h"
#include "cadjobs/scenarios/DryRun.h"
#include "cadjobs/scenarios/PackageContent.h"
#include "engine/catalogue/ScenarioDescription.h"
#include "formats/ScenarioManifest.h"
#include "formats/ScenarioPackage.h"
#include "front_end/command_line/NamesInText.h"
#include "front_end/commands/FileRoles.h"
#include "front_end/commands/InputSets.h"
#include "front_end/output/CheckReport.h"
#include "front_end/output/DisplayText.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace front_end::commands {
namespace {

/// Runs the checks one after another and keeps their results.
class Examination {
public:
    Examination(CommandContext& commandContext, const Command& givenCommand)
        : context(commandContext), command(givenCommand), scenario(AbsolutePath(command.operands.front())) {}

    void Run() {
        if (CheckDescription() && CheckInputs()) {
            CheckRun();
        }
    }

    const std::vector<CheckResult>& Results() const { return results; }
    const DryRunResult& LastRun() const { return run; }

private:
    bool Fine(const wchar_t* name, const std::wstring& message) {
        results.push_back({name, true, message});
        return true;
    }
    bool Wrong(const wchar_t* name, const std::wstring& message) {
        results.push_back({name, false, message});
        return false;
    }
    std::wstring Format(const wchar_t* key, std::initializer_list<std::wstring> values) const {
        return context.texts.Format(key, values);
    }

    bool CheckDescription() {
        const std::wstring typed = platform::ToNativeText(scenario);
        if (platform::IsDirectory(scenario)) {
            const std::wstring package = scratch / (platform::FileName(scenario) + L".esa");
            try {
                (void)PackDirectory(context, scenario, package);
            } catch (const CommandFailure& failure) {
                return Wrong(L"description", failure.message);
            }
            scenario = package;
        }
        if (!IsFile(scenario)) {
            throw CommandFailure{ExitCode::Usage, Format(L"Scenario/NoScenario", {typed})};
        }
        std::wstring problem;
        if (!scenario_manifest::ReadFor(scenario, manifest, problem) || !ReadInputs(problem)) {
            return Wrong(L"description", problem);
        }
        return Fine(L"description", manifest.displayName.empty() ? typed : manifest.displayName);
    }

    /// Those of a script are in a file beside it; without one it takes any.
    bool ReadInputs(std::wstring& problem) {
        if (scenario_manifest::IsPackage(scenario)) {
            takesAnyInputs = manifest.inputs.empty();
            return scenario_package::Unpack(scenario, scratch / L"unpacked", problem);
        }
        const std::wstring name = platform::FileName(scenario);
        const std::size_t dot = name.rfind(L'.');
        const std::wstring base = name.substr(0, dot);
        ScenarioFile file{
            dot == std::wstring::npos ? L"" : name.substr(dot), platform::ParentDirectory(scenario), {}, base, {}};
        file.hasSettings = platform::Exists(platform::ParentDirectory(scenario) + L"\\" + base + L".adc");
        takesAnyInputs = !file.hasSettings;
        if (const auto described = DescribeScenario(file)) {
            manifest.inputs = described->inputs;
        }
        return true;
    }

    std::vector<std::wstring> GivenInputs() const {
        std::vector<std::wstring> files;
        for (std::size_t i = 1; i < command.operands.size(); ++i) {
            const std::vector<std::wstring> set = FilesOfInputSet(command.operands[i]);
            files.insert(files.end(), set.begin(), set.end());
        }
        return files;
    }

    /// The files of the package whose names begin with "input", in its directory of tests.
    std::vector<std::wstring> PackedInputs() const {
        const std::wstring tests = scratch / L"unpacked\\tests";
        std::vector<std::wstring> files;
        if (scenario_manifest::IsPackage(scenario) && platform::IsDirectory(tests)) {
            for (const std::wstring& file : FilesBelow(context, tests)) {
                if (file.starts_with(L"input") && file.find(L'\\') == std::wstring::npos) {
                    files.push_back(PathFuncs::Join(tests, file));
                }
            }
        }
        return files;
    }

    static bool Suits(const std::wstring& file, const InputFileSpec& input) {
        const std::wstring lower = LowerCase(platform::FileName(file));
        return input.extensions.empty() ||
               std::any_of(input.extensions.begin(), input.extensions.end(),
                           [&](const std::wstring& extension) { return lower.ends_with(L"." + LowerCase(extension)); });
    }

    bool CheckInputs() {
        inputs = command.operands.size() > 1 ? GivenInputs() : PackedInputs();
        for (const std::wstring& file : inputs) {
            if (!IsFile(file)) {
                return Wrong(L"inputs", Format(L"Scenario/NoInput", {platform::ToNativeText(file)}));
            }
        }
        if (inputs.empty()) {
            return Wrong(L"inputs", context.texts.Get(L"Scenario/NoInputs"));
        }
        return takesAnyInputs ? TellInputs() : CheckKinds();
    }

    bool CheckKinds() {
        if (inputs.size() != manifest.inputs.size()) {
            return Wrong(L"inputs", Format(L"Scenario/InputCount",
                                           {std::to_wstring(manifest.inputs.size()), std::to_wstring(inputs.size())}));
        }
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            if (!Suits(inputs[i], manifest.inputs[i])) {
                return Wrong(L"inputs", Format(L"Scenario/InputKind",
                                               {platform::FileName(inputs[i]), manifest.inputs[i].cadName}));
            }
        }
        return TellInputs();
    }

    bool TellInputs() {
        std::wstring names;
        for (const std::wstring& file : inputs) {
            names += (names.empty() ? L"" : L", ") + platform::FileName(file);
        }
        return Fine(L"inputs", names);
    }

    /// Files that are about to be removed have no paths.
    static void Shorten(std::vector<std::wstring>& files, const std::wstring& directory) {
        const std::wstring beginning = platform::ToNativeText(directory) + platform::nativeSeparator;
        for (std::wstring& file : files) {
            file = platform::ToNativeText(file);
            file.erase(0, file.starts_with(beginning) ? beginning.size() : 0);
        }
    }

    void CheckRun() {
        const bool isKept = !command.outputFolder.empty();
        const std::wstring output = isKept ? AbsolutePath(command.outputFolder) : scratch / L"output";
        if (const platform::Error result = platform::EnsureDirectory(output); !result) {
            throw CommandFailure{ExitCode::Usage,
                                 Format(L"Scenario/NotMade", {platform::ToNativeText(output), result.Text()})};
        }
        run = RunOnce(context, scratch, {scenario, inputs, command.runArgument, output});
        if (!isKept) {
            Shorten(run.outputFiles, output);
        }
        const std::wstring message = run.messages.empty()
                                         ? Format(L"Scenario/OutputFiles", {std::to_wstring(run.outputFiles.size())})
                                         : run.messages.front();
        results.push_back({L"run", run.hasSucceeded, message});
    }

    CommandContext& context;
    const Command& command;
    ScratchDirectory scratch;
    std::wstring scenario;
    scenario_manifest::ScenarioManifest manifest;
    /// Neither number nor kinds of inputs are described.
    bool takesAnyInputs = true;
    std::vector<std::wstring> inputs;
    DryRunResult run;
    std::vector<CheckResult> results;
};

/// The names of the results; of a failed run the end of its output, which often has the reason.
void WriteRun(CommandContext& context, const DryRunResult& run) {
    for (const std::wstring& file : run.outputFiles) {
        context.console.Write(L"    " + OneLine(platform::ToNativeText(file)) + L"\n");
    }
    std::wistringstream lines(run.hasSucceeded ? std::wstring() : text::FromUtf8(run.log));
    for (std::wstring line; std::getline(lines, line);) {
        context.console.Write(L"    | " + OneLine(line) + L"\n");
    }
}

} // namespace

ExitCode CheckScenario(CommandContext& context, const Command& command) {
    Examination examination(context, command);
    examination.Run();
    const ExitCode exitCode = ReportChecks(context, examination.Results(), command.asJson);
    if (!command.asJson) {
        WriteRun(context, examination.LastRun());
    }
    return exitCode;
}

} // namespace front_end::commands
