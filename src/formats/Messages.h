#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"

#include <string>
#include <vector>

/// The other direction of every message: the answers that a host sends and the requests that it reads. Counterpart of
/// `ControllerCSWrapper::Serialize` and `Deserialize`, with the same rules: one member, its name; false leaves outputs
/// as they were; any thread.
namespace messages {

CONTROLLER_API std::wstring Serialize(const std::wstring& name, const JobEnqueueResult& result);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const std::vector<JobStatusInfo>& statuses);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const std::vector<ScenarioInfo>& scenarios);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const std::vector<ScenarioParameterSetInfo>& sets);
CONTROLLER_API std::wstring Serialize(const std::wstring& name, const std::wstring& text);

[[nodiscard]] CONTROLLER_API bool Deserialize(const std::wstring& text, EnqueueJobsInfo& info);

} // namespace messages
