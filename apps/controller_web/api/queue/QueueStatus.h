#pragma once

#include "front_end/output/StateJson.h"

#include <string>

namespace web {

/// The state of the queue as a whole.
struct QueueStatus {
    bool isPaused = false;
    bool isReadOnly = false;
    front_end::HostState host;
    front_end::JobCounts counts;
};

/// {"version":1,"paused":false,"readOnly":false,"host":{...},"counts":{...}}
std::wstring QueueJson(const QueueStatus& status);
/// The same without the version.
std::wstring QueuePartJson(const QueueStatus& status);
std::wstring CountsJson(const front_end::JobCounts& counts);

} // namespace web
