/// A process whose arguments select its behaviour: a command and its parameters.

#include <algorithm>
#include <chrono>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "kit/programs/StopRequests.h"
#include "platform/files/File.h"
#include "platform/files/NativePath.h"
#include "platform/processes/ForkServer.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "platform/system/SharedLibrary.h"
#include "platform/terminal/Console.h"
#include "text/Text.h"

namespace {

using Arguments = std::vector<std::wstring>;

void Print(const std::wstring& text) {
    (void)platform::WriteOutput(text::ToUtf8(text) + "\n");
}

[[noreturn]] void WaitForEver() {
    for (;;) {
        platform::WaitForAny({}, std::nullopt);
    }
}

std::wstring OwnProgram() {
    return platform::ResolveAgainst(platform::ProgramDirectory(), L"test_process" CONTROLLER_PROGRAM_SUFFIX);
}

/// Another process of this program in its own session. It inherits the handle that shows the test which processes live.
platform::ProcessStart Another(const Arguments& arguments, void* life) {
    platform::ProcessStart start;
    start.program = OwnProgram();
    start.arguments = arguments;
    start.detached = true;
    if (life != nullptr) {
        start.inherited = {life};
        start.arguments.push_back(platform::InheritedHandleText(life));
    }
    return start;
}

platform::OwnedHandle StartOrSay(const platform::ProcessStart& start) {
    platform::OwnedHandle process;
    if (const platform::Error result = platform::StartProcess(start, process); !result) {
        Print(L"cannot start another: " + result.Text());
    }
    return process;
}

platform::OwnedHandle StartAnother(const Arguments& arguments, void* life) {
    return StartOrSay(Another(arguments, life));
}

platform::OwnedHandle TakeLife(const Arguments& arguments, std::size_t index) {
    return index < arguments.size() ? platform::TakeInheritedHandle(arguments[index]) : platform::OwnedHandle();
}

// The commands

int Exit(const Arguments& arguments) {
    return std::stoi(arguments.at(0));
}

/// Prints each argument on its own line, in brackets.
int Echo(const Arguments& arguments) {
    for (const std::wstring& argument : arguments) {
        Print(L"[" + argument + L"]");
    }
    return 0;
}

int PrintVariable(const Arguments& arguments) {
    Print(platform::GetEnvironment(arguments.at(0)).value_or(L"(not set)"));
    return 0;
}

int PrintDirectory(const Arguments&) {
    Print(platform::ToNativeText(platform::CurrentDirectory()));
    return 0;
}

/// Appends a line to a file: the current directory, the further arguments, each in brackets, and the values of the
/// hook's variables by name. Written in one piece, so that two processes do not mix their lines.
int RecordHook(const Arguments& arguments) {
    std::wstring line = platform::ToNativeText(platform::CurrentDirectory());
    for (auto argument = arguments.begin() + 1; argument != arguments.end(); ++argument) {
        line += L" [" + *argument + L"]";
    }
    for (const wchar_t* name : {L"EVENT", L"JOB_NUMBER", L"JOB_ID", L"JOB_STATUS", L"JOB_OUTPUT", L"JOB_SCENARIO"}) {
        if (const auto value = platform::GetEnvironment(std::wstring(L"CONTROLLER_") + name)) {
            line += std::wstring(L" ") + name + L"=" + *value;
        }
    }
    platform::File file;
    if (!file.OpenForAppending(arguments.at(0), false)) {
        return 1;
    }
    return file.Write(text::ToUtf8(line) + "\n") ? 0 : 1;
}

/// Records its start and waits.
int RecordHookAndWait(const Arguments& arguments) {
    RecordHook(arguments);
    WaitForEver();
}

/// Prints numbered lines of 100 bytes.
int PrintLines(const Arguments& arguments) {
    const int count = std::stoi(arguments.at(0));
    constexpr std::size_t lineLength = 100;
    constexpr std::size_t writeSize = 64 * 1024;
    std::string lines;
    for (int number = 1; number <= count; ++number) {
        std::string line = "line " + std::to_string(number) + " ";
        line.resize(lineLength - 1, '.');
        lines += line + "\n";
        if (lines.size() >= writeSize || number == count) {
            (void)platform::WriteOutput(std::exchange(lines, {}));
        }
    }
    return 0;
}

int PrintToBothStreams(const Arguments&) {
    (void)platform::WriteOutput("out\n");
    platform::WriteErrorOutput("error\n");
    return 0;
}

/// Prints whether a handle is open in this process.
int PrintIsOpen(const Arguments& arguments) {
    Print(platform::TakeInheritedHandle(arguments.at(0)) ? L"open" : L"closed");
    return 0;
}

int Wait(const Arguments& arguments) {
    const platform::OwnedHandle life = TakeLife(arguments, 0);
    Print(L"ready");
    WaitForEver();
}

int WaitStubbornly(const Arguments& arguments) {
    IgnoreStopRequests();
    return Wait(arguments);
}

/// Waits until an inherited handle is signalled.
int WaitFor(const Arguments& arguments) {
    const platform::OwnedHandle life = TakeLife(arguments, 1);
    const platform::OwnedHandle handle = platform::TakeInheritedHandle(arguments.at(0));
    platform::WaitForAny({handle.Get()}, std::nullopt);
    return 0;
}

/// Starts a process that waits for the end of this one, and exits.
int LeaveAWatcher(const Arguments& arguments) {
    const platform::OwnedHandle life = TakeLife(arguments, 0);
    const platform::OwnedHandle own = platform::OpenSelf();
    platform::ProcessStart watcher = Another({L"wait-for", platform::InheritedHandleText(own.Get())}, life.Get());
    watcher.inherited.push_back(own.Get());
    return StartOrSay(watcher) ? 0 : 1;
}

/// Starts a process without waiting for it, and exits.
int LeaveOneBehind(const Arguments& arguments) {
    const platform::OwnedHandle life = TakeLife(arguments, 0);
    StartAnother({L"wait"}, life.Get());
    return 0;
}

/// Starts children in sessions of their own: two direct ones, and one whose parent exits at once. Then waits.
int HaveFamily(const Arguments& arguments) {
    const platform::OwnedHandle life = TakeLife(arguments, 0);
    const platform::OwnedHandle first = StartAnother({L"wait"}, life.Get());
    const platform::OwnedHandle second = StartAnother({L"wait-stubbornly"}, life.Get());
    const platform::OwnedHandle passing = StartAnother({L"leave-one-behind"}, life.Get());
    platform::WaitForAny({passing.Get()}, std::nullopt);
    Print(L"ready");
    WaitForEver();
}

/// Starts two copies of itself, recursively to the given depth.
int Multiply(const Arguments& arguments) {
    const int depth = std::stoi(arguments.at(0));
    const platform::OwnedHandle life = TakeLife(arguments, 1);
    Print(L"ready");
    std::vector<platform::OwnedHandle> children;
    while (depth > 0 && children.size() < 2) {
        children.push_back(StartAnother({L"multiply", std::to_wstring(depth - 1)}, life.Get()));
    }
    WaitForEver();
}

/// Loads a module and prints its answer.
int LoadModule(const Arguments& arguments) {
    void* const module = platform::LoadModule(arguments.at(0));
    if (module == nullptr) {
        Print(L"not loaded: " + platform::LoadProblem(arguments.at(0)));
        return 1;
    }
    const auto answer = reinterpret_cast<int (*)()>(platform::FindExport(module, "Answer"));
    Print(L"Answer: " + std::to_wstring(answer()));
    return 0;
}

/// Loads a module like the product's programs, with the directories that follow the module.
int LoadModuleNarrowed(const Arguments& arguments) {
    platform::HardenLibrarySearch();
    platform::ProvideLibraries(arguments.at(0), {arguments.begin() + 1, arguments.end()});
    return LoadModule(arguments);
}

/// Serves forks. Copies exit with 7 ("accept"), are not prepared ("refuse"), or only when nobody waits for them
/// ("late").
int Serve(const Arguments& arguments) {
    const std::wstring& behaviour = arguments.at(0);
    const platform::OwnedHandle line = platform::TakeInheritedHandle(arguments.at(1));
    const auto prepare = [&](const std::string&) {
        if (behaviour == L"late") {
            platform::WaitForAny({line.Get()}, std::nullopt);
        }
        return behaviour != L"refuse";
    };
    return platform::ServeForks(line, line.Get(), std::chrono::hours(1), prepare) ? 7 : 0;
}

int Run(const Arguments& arguments) {
    const std::map<std::wstring, int (*)(const Arguments&)> commands = {
        {L"exit", Exit},
        {L"echo", Echo},
        {L"print-variable", PrintVariable},
        {L"print-folder", PrintDirectory},
        {L"record-hook", RecordHook},
        {L"record-hook-and-wait", RecordHookAndWait},
        {L"print-lines", PrintLines},
        {L"print-to-both-streams", PrintToBothStreams},
        {L"print-is-open", PrintIsOpen},
        {L"wait", Wait},
        {L"wait-stubbornly", WaitStubbornly},
        {L"wait-for", WaitFor},
        {L"leave-one-behind", LeaveOneBehind},
        {L"leave-a-watcher", LeaveAWatcher},
        {L"have-family", HaveFamily},
        {L"multiply", Multiply},
        {L"load-module", LoadModule},
        {L"load-module-narrowed", LoadModuleNarrowed},
        {L"serve", Serve},
    };
    return commands.at(arguments.at(0))({arguments.begin() + 1, arguments.end()});
}

} // namespace

int main(int count, char** values) {
    platform::PrepareConsole();
    try {
        return Run(platform::ProgramArguments(count, values));
    } catch (const std::exception& failure) {
        platform::WriteErrorOutput(std::string("test_process: ") + failure.what() + "\n");
        return 99;
    }
}
