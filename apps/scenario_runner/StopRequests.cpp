#include "scenario_runner/StopRequests.h"

#include <algorithm>

#include "platform/files/FileSystem.h"
#include "platform/processes/Process.h"

namespace scenario_runner {

bool HasLostOwner(const std::vector<void*>& owners) {
    return !std::all_of(owners.begin(), owners.end(), platform::IsProcessRunning);
}

bool IsStopRequested(const platform::StopSignal& signal, const std::wstring& killFile) {
    return !platform::IsProcessRunning(signal.Handle()) || platform::Exists(killFile) || platform::IsLink(killFile);
}

} // namespace scenario_runner
