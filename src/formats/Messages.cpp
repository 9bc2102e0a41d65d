#include "formats/Messages.h"

#include "formats/MessageText.h"
#include "formats/json/RecordLayouts.h"

namespace messages {

std::wstring Serialize(const std::wstring& name, const JobEnqueueResult& result) {
    return message_text::Serialize(name, result);
}

std::wstring Serialize(const std::wstring& name, const std::vector<JobStatusInfo>& statuses) {
    return message_text::Serialize(name, statuses);
}

std::wstring Serialize(const std::wstring& name, const std::vector<ScenarioInfo>& scenarios) {
    return message_text::Serialize(name, scenarios);
}

std::wstring Serialize(const std::wstring& name, const std::vector<ScenarioParameterSetInfo>& sets) {
    return message_text::Serialize(name, sets);
}

std::wstring Serialize(const std::wstring& name, const std::wstring& text) {
    return message_text::Serialize(name, text);
}

bool Deserialize(const std::wstring& text, EnqueueJobsInfo& info) {
    return message_text::Deserialize(text, info);
}

} // namespace messages
