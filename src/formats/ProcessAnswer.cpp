#include "formats/ProcessAnswer.h"

#include "formats/json/Reading.h"
#include "platform/processes/ForeignProcess.h"
#include "text/Hexadecimal.h"

namespace json {

template <>
struct TypeDescriptorOf<process_answer::ProcessAnswer> {
    using Record = process_answer::ProcessAnswer;
    static Slot Open(void* object, std::string_view name) {
        if (IsOpened(object)) {
            return {};
        }
        auto& answer = *static_cast<Record*>(object);
        return name == "ProcessId" ? SlotOf(answer.id) : SlotOf(answer.handle);
    }
    static bool IsOpened(const void* object) {
        const auto& answer = *static_cast<const Record*>(object);
        return answer.handle || answer.id;
    }
    static constexpr TypeDescriptor descriptor{.expected = L"an object with one member",
                                               .entry = Open,
                                               .isComplete = IsOpened,
                                               .incomplete = L"an empty object"};
};

} // namespace json

namespace process_answer {
namespace {

constexpr std::size_t shownLength = 60;

bool TakeHandle(const std::wstring& text, platform::OwnedHandle& process, std::wstring& problem) {
    const std::wstring shown = L"\"" + text.substr(0, shownLength) + L"\"";
    const std::optional<std::uint64_t> number = text::ReadHandle(text);
    if (!number) {
        problem = L"expected a process handle such as \"0x1f4\", found " + shown;
        return false;
    }
    if (const platform::Error result = platform::AdoptProcess(*number, process); !result) {
        problem = shown + L" is no handle of another process (on Linux: no pidfd): " + result.Text();
        return false;
    }
    return true;
}

bool OpenById(std::uint32_t id, platform::OwnedHandle& process, std::wstring& problem) {
    const platform::Error result = platform::OpenProcessById(id, process);
    if (!result) {
        problem = L"the process with the id " + std::to_wstring(id) + L" cannot be watched: " + result.Text();
    }
    return static_cast<bool>(result);
}

} // namespace

bool Parse(std::wstring_view json, ProcessAnswer& answer, std::wstring& problem) {
    return json::Read(json, answer, problem);
}

bool TakeProcess(const ProcessAnswer& answer, platform::OwnedHandle& process, std::wstring& problem) {
    return answer.id ? OpenById(*answer.id, process, problem)
                     : TakeHandle(answer.handle.value_or(std::wstring()), process, problem);
}

} // namespace process_answer
