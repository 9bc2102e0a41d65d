#include "modules/StartChecks.h"

#include "modules/EventTransmitterDescription.h"
#include "modules/ModuleProblem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/system/SharedLibrary.h"

namespace start_checks {
namespace {

void CheckHook(const std::wstring& event, const std::vector<std::wstring>& command,
               std::vector<std::wstring>& problems) {
    if (!command.empty() && !platform::FindRunnable(command.front())) {
        problems.push_back(L"The program \"" + command.front() + L"\" of the hook \"" + event +
                           L"\" is missing or cannot be run: install it, or check the setting \"hooks\".");
    }
}

} // namespace

void ProvideModuleLibraries(const settings::Settings& settings) {
    platform::ProvideLibraries(settings.eventTransmitter, settings.libraryDirectories);
    for (const std::wstring& module : settings.functionModules) {
        platform::ProvideLibraries(module, settings.libraryDirectories);
    }
}

std::wstring TransmitterProblem(const settings::Settings& settings) {
    const std::wstring problem = ModuleProblem(settings.eventTransmitter, {"GetEventTransmitter"});
    const std::wstring module = platform::ToNativeText(settings.eventTransmitter);
    if (!problem.empty()) {
        return L"front ends cannot be reached: the event transmitter " + module + L" " + problem +
               L" Check the setting \"eventTransmitter\".";
    }
    const std::wstring said =
        DescribeEventTransmitter(settings.eventTransmitter, L"engine:" + settings.transmitterName).problem;
    return L"front ends cannot be reached through " + module + L" as \"" + settings.transmitterName + L"\": " +
           (said.empty() ? L"another host has the name, or the module refuses it" : said) +
           L". The settings \"eventTransmitter\" and \"transmitterName\" say which.";
}

std::vector<std::wstring> LoadFunctionModules(const settings::Settings& settings, FunctionManager& functions) {
    std::vector<std::wstring> problems;
    for (const std::wstring& module : settings.functionModules) {
        (void)functions.LoadFunctionDll(module);
        if (const std::wstring problem = ModuleProblem(module, {"GetFunctions", "CallFunction"}); !problem.empty()) {
            problems.push_back(L"The function module " + platform::ToNativeText(module) + L" " + problem +
                               L" Check the setting \"functionModules\".");
        }
    }
    if (!functions.HasFunction("RunScenario")) {
        problems.emplace_back(L"No function module offers \"RunScenario\": every job will fail. Check the setting "
                              L"\"functionModules\".");
    }
    return problems;
}

std::vector<std::wstring> ProgramProblems(const settings::Settings& settings) {
    std::vector<std::wstring> problems;
    if (!platform::FindRunnable(settings.scenarioRunner)) {
        problems.push_back(L"The program that runs scenarios, " + platform::ToNativeText(settings.scenarioRunner) +
                           L", is missing or cannot be run. Check the setting \"scenarioRunner\".");
    }
    for (const auto& [extension, command] : settings.interpreters) {
        if (!command.empty() && !platform::FindRunnable(command.front())) {
            problems.push_back(L"The interpreter \"" + command.front() + L"\" of " + extension +
                               L" scenarios is missing or cannot be run: install it, or name its program in the "
                               L"setting \"interpreters\".");
        }
    }
    CheckHook(L"jobEnded", settings.hooks.jobEnded, problems);
    CheckHook(L"jobFailed", settings.hooks.jobFailed, problems);
    CheckHook(L"queueEmpty", settings.hooks.queueEmpty, problems);
    return problems;
}

std::vector<std::wstring> Problems(const settings::Settings& settings) {
    ProvideModuleLibraries(settings);
    FunctionManager functions({});
    std::vector<std::wstring> problems = LoadFunctionModules(settings, functions);
    const std::vector<std::wstring> ofPrograms = ProgramProblems(settings);
    problems.insert(problems.end(), ofPrograms.begin(), ofPrograms.end());
    return problems;
}

} // namespace start_checks
