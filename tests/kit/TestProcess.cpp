#include "kit/TestProcess.h"

#include <functional>
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

/// Reads until the end of the output, or until `goesOn` is false for all that was read.
std::string ReadWhile(platform::OutputPipe& pipe, const std::string& awaited,
                      const std::function<bool(const std::string&)>& goesOn) {
    Deadline deadline(awaited);
    std::string all;
    std::string part;
    do {
        pipe.Read(readSize, part);
        deadline.Show(part);
        all += part;
    } while (!part.empty() && goesOn(all));
    return all;
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
    if (!pipe.Open()) {
        return {};
    }
    start.output = pipe.WriteEnd();
    if (!platform::StartProcess(start, process)) {
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
    return ReadWhile(pipe, "the end of the output of " + whose, [](const std::string&) { return true; });
}

bool ReadUntil(platform::OutputPipe& pipe, const std::string& text) {
    const auto isMissing = [&](const std::string& output) { return output.find(text) == std::string::npos; };
    return !isMissing(ReadWhile(pipe, "the output " + text, isMissing));
}

bool WaitUntilSignalled(void* handle) {
    return platform::WaitForAny({handle}, timeout).has_value();
}

} // namespace test_support
