#include "companion/ControllerCSWrapper.h"

#include "companion/MessageText.h"
#include "companion/ProcessHandleText.h"
#include "companion/json/RecordLayouts.h"

std::wstring ControllerCSWrapper::Serialize(const std::wstring& name, const EnqueueJobsInfo& info) {
    return message_text::Serialize(name, info);
}

std::wstring ControllerCSWrapper::Serialize(const std::wstring& key, const std::vector<JobListInfo>& records) {
    return message_text::Serialize(key, records);
}

std::wstring ControllerCSWrapper::Serialize(const std::wstring& name, const std::vector<std::wstring>& texts) {
    return message_text::Serialize(name, texts);
}

std::wstring ControllerCSWrapper::Serialize(const std::wstring& name) {
    return message_text::Serialize(name, nullptr);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::vector<JobListInfo>& value) {
    return message_text::Deserialize(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, JobEnqueueResult& value) {
    return message_text::Deserialize(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::vector<JobStatusInfo>& value) {
    return message_text::Deserialize(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::vector<ScenarioInfo>& value) {
    return message_text::Deserialize(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::vector<ScenarioParameterSetInfo>& value) {
    return message_text::Deserialize(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::vector<std::wstring>& value) {
    return message_text::Deserialize(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::wstring& value) {
    return message_text::Deserialize(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, void*& value) {
    return boundary::Guard("Deserialize", [&] {
        std::wstring digits;
        if (!message_text::Deserialize(text, digits)) {
            return false;
        }
        if (!process_handle_text::Parse(digits, value)) {
            WriteErrorLog(L"A message cannot be read: expected a process handle such as \"0x1f4\", found \"" +
                          digits.substr(0, 60) + L"\"");
            return false;
        }
        return true;
    });
}
