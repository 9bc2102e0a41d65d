#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include "formats/MessageText.h"
#include "formats/ProcessAnswer.h"
#include "formats/json/RecordLayouts.h"

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
        process_answer::ProcessAnswer answer;
        platform::OwnedHandle process;
        std::wstring problem;
        if (!process_answer::Parse(text, answer, problem) || !process_answer::TakeProcess(answer, process, problem)) {
            WriteErrorLog(L"The answer of a function module names no process: " + problem);
            return false;
        }
        value = process.Release();
        return true;
    });
}
