#include "kit/TestProcess.h"

#include <utility>

#include "kit/Deadline.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace test_support {
namespace {

constexpr std::size_t readSize = 64 * 1024;

std::string Described(const platform::ProcessStart& start) {
    std::string description = text::ToUtf8(platform::FileName(start.program));
    for (const std::wstring& argument : start.arguments) {
        description += ' ' + text::ToUtf8(argument);
    }
    return description;
}

} // namespace

std::wstring ProgramPath(const std::wstring& name) {
    return platform::ResolveAgainst(platform::ProgramDirectory(), name + CONTROLLER_PROGRAM_SUFFIX);
}

platform::ProcessStart TestProcess(const std::vector<std::wstring>& arguments) {
    platform::ProcessStart start;
    start.program = ProgramPath(L"test_process");
    start.arguments = arguments;
    return start;
}

Ending RunToEnd(platform::ProcessStart start) {
    platform::OutputPipe pipe;
    platform::OwnedHandle process;
    if (pipe.Open()) {
        return {};
    }
    start.output = pipe.WriteEnd();
    if (platform::StartProcess(start, process)) {
        return {};
    }
    pipe.CloseWriteEnd();
    Ending ending{ReadToEnd(pipe, Described(start)), std::nullopt};
    if (WaitUntilSignalled(process.Get())) {
        ending.exitCode = platform::ExitCode(process.Get());
    }
    return ending;
}

std::string ReadToEnd(platform::OutputPipe& pipe, const std::string& whose) {
    Deadline deadline("the end of the output of " + whose);
    std::string all;
    std::string part;
    do {
        pipe.Read(readSize, part);
        deadline.Show(part);
        all += part;
    } while (!part.empty());
    return all;
}

bool ReadUntil(platform::OutputPipe& pipe, const std::string& text) {
    Deadline deadline("the output " + text);
    std::string all;
    std::string part;
    do {
        pipe.Read(readSize, part);
        deadline.Show(part);
        all += part;
    } while (!part.empty() && all.find(text) == std::string::npos);
    return all.find(text) != std::string::npos;
}

bool WaitUntilSignalled(void* handle) {
    return platform::WaitForAny({handle}, patience).has_value();
}

} // namespace test_support
