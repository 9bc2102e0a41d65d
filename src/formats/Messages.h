#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"

#include <string>
#include <type_traits>
#include <vector>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Events.h"

/// The messages in the direction that `ControllerCSWrapper::Serialize` and `Deserialize` do not cover: the answers that
/// a host sends and the requests that it receives. The same rules hold: a message is an object with one member; a
/// function that returns false leaves its outputs unchanged. Threads: any.
namespace messages {

CONTROLLER_API std::wstring Serialize(const std::wstring& name, const JobEnqueueResult& result);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const std::vector<JobStatusInfo>& statuses);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const std::vector<ScenarioInfo>& scenarios);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const std::vector<ScenarioParameterSetInfo>& sets);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const std::wstring& text);

CONTROLLER_API std::wstring Serialize(const std::wstring& name, const ScheduledRequest& request);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const std::vector<ListedJob>& jobs);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const JobsEdit& edit);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const QueueState& state);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const JobsQuery& query);

[[nodiscard]] CONTROLLER_API bool Deserialize(const std::wstring& text, ScheduledRequest& request);
[[nodiscard]] CONTROLLER_API bool Deserialize(const std::wstring& text, std::vector<ListedJob>& jobs);
[[nodiscard]] CONTROLLER_API bool Deserialize(const std::wstring& text, JobsEdit& edit);
[[nodiscard]] CONTROLLER_API bool Deserialize(const std::wstring& text, QueueState& state);
[[nodiscard]] CONTROLLER_API bool Deserialize(const std::wstring& text, JobsQuery& query);

/// Serialize and parse any event.
template <typename Content>
std::wstring Serialize(const events::Event<Content>& event, const std::type_identity_t<Content>& content) {
    if constexpr (std::is_same_v<Content, events::Nothing>) {
        return ControllerCSWrapper::Serialize(event.name);
    } else if constexpr (requires { Serialize(std::wstring(), content); }) {
        return Serialize(event.name, content);
    } else {
        return ControllerCSWrapper::Serialize(event.name, content);
    }
}

/// Parses the content of a message of any event.
template <typename Content>
[[nodiscard]] bool DeserializeContent(const std::wstring& text, Content& content) {
    if constexpr (requires { Deserialize(text, content); }) {
        return Deserialize(text, content);
    } else {
        return ControllerCSWrapper::Deserialize(text, content);
    }
}

template <typename Content>
[[nodiscard]] bool Deserialize(const events::Event<Content>& /*event*/, const std::wstring& text,
                               std::type_identity_t<Content>& content) {
    return DeserializeContent(text, content);
}

} // namespace messages
