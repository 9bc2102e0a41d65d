#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/doubles/RecordingCompanion.h"

#include <numeric>

/// The functions used by front ends: messages are plain words with scripted contents.
namespace {

ScriptedMessages& Messages() {
    return RecordingCompanion::Current().messages;
}

template <typename Value>
bool Read(const std::wstring& payload, Value& value) {
    const Value* const scripted = Messages().Find<Value>(payload);
    value = scripted == nullptr ? value : *scripted;
    return scripted != nullptr;
}

template <typename Key, typename Value>
bool Read(const std::map<Key, Value>& values, const Key& key, Value& value) {
    const auto found = values.find(key);
    value = found == values.end() ? value : found->second;
    return found != values.end();
}

std::wstring Join(const std::vector<std::wstring>& texts) {
    return std::accumulate(texts.begin(), texts.end(), std::wstring(),
                           [](const std::wstring& joined, const std::wstring& text) {
                               return joined.empty() ? text : joined + L"," + text;
                           });
}

} // namespace

std::wstring ControllerCSWrapper::CreateGuid() {
    return L"guid " + std::to_wstring(++Messages().guidCount);
}

bool ControllerCSWrapper::ReadJsonFile(const std::wstring& path, std::wstring& text) {
    return Read(Messages().jsonFiles, path, text);
}

bool ControllerCSWrapper::ReadEnqueueJobsFile(const std::wstring& path, std::vector<EnqueueJobsInfo>& infos) {
    return Read(Messages().jobsFiles, path, infos);
}

bool ControllerCSWrapper::GetStringResources(const std::wstring& json, const std::wstring& name, std::wstring& member) {
    RecordingCompanion::Current().AddEvent(L"string resource: ", name);
    if (Messages().stringResourceRefusals > 0) {
        --Messages().stringResourceRefusals;
        return false;
    }
    return Read(Messages().stringResources, {json, name}, member);
}

std::wstring ControllerCSWrapper::Serialize(const std::wstring& name, const EnqueueJobsInfo& info) {
    return name + L": " + info.requestId;
}

std::wstring ControllerCSWrapper::Serialize(const std::wstring& name, const std::vector<std::wstring>& texts) {
    return name + L": " + Join(texts);
}

std::wstring ControllerCSWrapper::Serialize(const std::wstring& name) {
    return name;
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::vector<JobListInfo>& value) {
    return Read(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, JobEnqueueResult& value) {
    return Read(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::vector<JobStatusInfo>& value) {
    return Read(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::vector<ScenarioInfo>& value) {
    return Read(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::vector<ScenarioParameterSetInfo>& value) {
    return Read(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::vector<std::wstring>& value) {
    return Read(text, value);
}

bool ControllerCSWrapper::Deserialize(const std::wstring& text, std::wstring& value) {
    return Read(text, value);
}
