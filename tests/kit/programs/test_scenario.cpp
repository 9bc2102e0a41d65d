/// A scenario with steps from a test: one per line of its script or, in a package, of the file "steps.txt" beside the
/// program.

#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/RunProtocol.h"
#include "kit/Require.h"
#include "kit/programs/BadBehaviours.h"
#include "kit/programs/StopRequests.h"
#include "platform/files/FileLock.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "platform/terminal/Console.h"
#include "text/Text.h"

namespace {

using test_support::Require;

using Words = std::vector<std::wstring>;

constexpr const wchar_t* stepsOption = L"--steps";

std::wstring InCurrentDirectory(const std::wstring& name) {
    return platform::ResolveAgainst(platform::CurrentDirectory(), name);
}

constexpr const char* cannotWrite = "cannot write";

/// Records a process of the scenario for the test.
void NoteProcess(std::uint32_t number) {
    Require(platform::CreateEmptyFile(InCurrentDirectory(L"process-" + std::to_wstring(number))), cannotWrite);
}

/// Another process of this program with its own steps and session.
platform::OwnedHandle StartAnother(const Words& steps) {
    platform::ProcessStart start;
    start.program = platform::ResolveAgainst(platform::ProgramDirectory(),
                                             std::wstring(L"test_scenario") + platform::programExtension);
    start.arguments = {stepsOption};
    start.arguments.insert(start.arguments.end(), steps.begin(), steps.end());
    start.detached = true;
    platform::OwnedHandle process;
    Require(platform::StartProcess(start, process), "cannot start another");
    NoteProcess(platform::ProcessNumber(process.Get()));
    return process;
}

[[noreturn]] void Wait(const std::wstring&) {
    for (;;) {
        platform::WaitForAny({}, std::nullopt);
    }
}

void Print(const std::wstring& text) {
    (void)platform::WriteOutput(text::ToUtf8(text) + "\n");
}

void PrintLines(const std::wstring& count) {
    constexpr int linesAtOnce = 500;
    std::string lines;
    for (int number = 1; number <= std::stoi(count); ++number) {
        lines += "line " + std::to_string(number) + " of many\n";
        if (number % linesAtOnce == 0) {
            (void)platform::WriteOutput(std::exchange(lines, {}));
        }
    }
    (void)platform::WriteOutput(lines);
}

void PrintVariable(const std::wstring& name) {
    Print(platform::GetEnvironment(name).value_or(L"(not set)"));
}

void WriteResult(const std::wstring& verdict) {
    const run_protocol::RunScenarioResult result{L"", verdict == L"success", {{7, L"its own words"}}, {}};
    Require(ControllerCSWrapper::CreateJsonFile(run_protocol::SerializeRunScenarioResult(result),
                                                InCurrentDirectory(run_protocol::resultFileName)),
            cannotWrite);
}

void WriteUnusableResult(const std::wstring&) {
    Require(platform::ReplaceFile(InCurrentDirectory(run_protocol::resultFileName), "{"), cannotWrite);
}

void WriteResultWithOutput(const std::wstring& path) {
    const run_protocol::RunScenarioResult result{L"", true, {}, {path}};
    Require(run_protocol::WriteFile(run_protocol::SerializeRunScenarioResult(result),
                                    InCurrentDirectory(run_protocol::resultFileName)),
            cannotWrite);
}

/// "NAME=CONTENT".
void WriteIn(const std::wstring& directory, const std::wstring& text) {
    const std::size_t end = text.find(L'=');
    Require(platform::ReplaceFile(platform::ResolveAgainst(directory, text.substr(0, end)),
                                  text::ToUtf8(text.substr(end + 1))),
            cannotWrite);
}

void WriteFileInWorkDirectory(const std::wstring& text) {
    WriteIn(platform::CurrentDirectory(), text);
}

void WriteOutputFile(const std::wstring& text) {
    run_protocol::RunScenarioInfo info;
    std::wstring problem;
    const std::wstring path = InCurrentDirectory(run_protocol::runInfoFileName);
    const bool isRead = run_protocol::ReadRunScenarioInfoFile(path, info, problem);
    Require(isRead, "no run request: " + text::ToUtf8(problem));
    WriteIn(info.outputFolder, text);
}

void ReportProgress(const std::wstring& percentage) {
    Require(run_protocol::WriteFile(run_protocol::SerializeProgress(L"", std::stoi(percentage), L"getting on"),
                                    InCurrentDirectory(run_protocol::progressFileName)),
            cannotWrite);
}

void WaitForFile(const std::wstring& name) {
    platform::DirectoryWatch watch(platform::CurrentDirectory());
    while (!platform::Exists(InCurrentDirectory(name))) {
        platform::WaitForAny({watch.Handle()}, std::nullopt);
        watch.Rearm();
    }
}

void WaitForRequest(const std::wstring&) {
    WaitForFile(run_protocol::killFileName);
}

void LeaveOneBehind(const std::wstring&) {
    StartAnother({L"wait"});
}

/// Two children, and a grandchild whose parent has ended; each in its own session.
void HaveFamily(const std::wstring&) {
    StartAnother({L"wait"});
    StartAnother({L"ignore requests", L"wait"});
    const platform::OwnedHandle passing = StartAnother({L"leave one behind"});
    platform::WaitForAny({passing.Get()}, std::nullopt);
}

/// Holds a lock in a directory while the process lives, so that a test can detect its end.
void LiveIn(const std::wstring& directory) {
    static platform::FileLock life;
    const std::wstring name = std::to_wstring(platform::OwnProcessNumber()) + ControllerCSWrapper::CreateGuid();
    Require(life.Take(platform::ResolveAgainst(directory, name)), "no sign of life");
}

void HaveChildLivingIn(const std::wstring& directory) {
    StartAnother({L"live in " + directory, L"wait"});
}

void BeReady(const std::wstring&) {
    NoteProcess(platform::OwnProcessNumber());
    Require(platform::CreateEmptyFile(InCurrentDirectory(L"ready")), cannotWrite);
}

void IgnoreRequests(const std::wstring&) {
    IgnoreStopRequests();
}

[[noreturn]] void Exit(const std::wstring& code) {
    std::exit(std::stoi(code));
}

Steps UsualSteps() {
    return {
        {L"print ", Print},
        {L"print lines ", PrintLines},
        {L"print variable ", PrintVariable},
        {L"write result ", WriteResult},
        {L"write unusable result", WriteUnusableResult},
        {L"write result with output ", WriteResultWithOutput},
        {L"write file ", WriteFileInWorkDirectory},
        {L"write output ", WriteOutputFile},
        {L"report progress ", ReportProgress},
        {L"wait for file ", WaitForFile},
        {L"wait for request", WaitForRequest},
        {L"wait", Wait},
        {L"leave one behind", LeaveOneBehind},
        {L"have family", HaveFamily},
        {L"live in ", LiveIn},
        {L"have child living in ", HaveChildLivingIn},
        {L"be ready", BeReady},
        {L"ignore requests", IgnoreRequests},
        {L"exit ", Exit},
    };
}

const Steps& KnownSteps() {
    static const Steps steps = [] {
        Steps all = UsualSteps();
        all.merge(CommonBadBehaviours());
        all.merge(SystemBadBehaviours());
        return all;
    }();
    return steps;
}

/// The longest matching prefix.
void Perform(const std::wstring& step) {
    for (auto known = KnownSteps().rbegin(); known != KnownSteps().rend(); ++known) {
        if (step.starts_with(known->first)) {
            known->second(step.substr(known->first.size()));
            return;
        }
    }
    throw std::runtime_error("unknown step: " + text::ToUtf8(step));
}

Words ReadSteps(const std::wstring& path) {
    constexpr std::size_t mostBytes = 1 << 20;
    std::string text;
    Require(platform::ReadFile(path, mostBytes, text), "no steps");
    Words steps;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        steps.push_back(text::FromUtf8(line));
    }
    return steps;
}

Words StepsFrom(const Words& arguments) {
    if (arguments.at(0) == stepsOption) {
        return {arguments.begin() + 1, arguments.end()};
    }
    const bool isPackaged = arguments.size() == 1;
    return ReadSteps(isPackaged ? platform::ResolveAgainst(platform::ProgramDirectory(), L"steps.txt") : arguments[0]);
}

} // namespace

int main(int count, char** values) {
    platform::PrepareConsole();
    try {
        for (const std::wstring& step : StepsFrom(platform::ProgramArguments(count, values))) {
            Perform(step);
        }
        return 0;
    } catch (const std::exception& failure) {
        platform::WriteErrorOutput(std::string("test_scenario: ") + failure.what() + "\n");
        return 99;
    }
}
