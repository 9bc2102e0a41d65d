#include "formats/Messages.h"

#include "formats/MessageText.h"
#include "formats/json/SchedulingLayouts.h"

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

std::wstring Serialize(const std::wstring& name, const ScheduledRequest& request) {
    return message_text::Serialize(name, request);
}

std::wstring Serialize(const std::wstring& name, const std::vector<ListedJob>& jobs) {
    return message_text::Serialize(name, jobs);
}

std::wstring Serialize(const std::wstring& name, const JobsEdit& edit) {
    return message_text::Serialize(name, edit);
}

std::wstring Serialize(const std::wstring& name, const QueueState& state) {
    return message_text::Serialize(name, state);
}

std::wstring Serialize(const std::wstring& name, const JobsQuery& query) {
    return message_text::Serialize(name, query);
}

bool Deserialize(const std::wstring& text, ScheduledRequest& request) {
    return message_text::Deserialize(text, request);
}

bool Deserialize(const std::wstring& text, std::vector<ListedJob>& jobs) {
    return message_text::Deserialize(text, jobs);
}

bool Deserialize(const std::wstring& text, JobsEdit& edit) {
    return message_text::Deserialize(text, edit);
}

bool Deserialize(const std::wstring& text, QueueState& state) {
    return message_text::Deserialize(text, state);
}

bool Deserialize(const std::wstring& text, JobsQuery& query) {
    return message_text::Deserialize(text, query);
}

} // namespace messages
