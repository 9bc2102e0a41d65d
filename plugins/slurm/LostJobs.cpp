#include "slurm/LostJobs.h"

#include <algorithm>
#include <chrono>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "slurm/ClusterCommands.h"
#include "slurm/JobName.h"

namespace slurm {
namespace {

constexpr std::chrono::seconds timeout{30};
constexpr std::chrono::seconds interval{5};

/// False if the cluster cannot be reached.
bool TryToEnd(const std::wstring& prefix, const std::wstring& keptHost) {
    const auto names = ListJobs(timeout);
    return names && std::all_of(names->begin(), names->end(), [&](const std::wstring& name) {
               if (!IsOfEarlierHost(name, prefix, keptHost)) {
                   return true;
               }
               ControllerCSWrapper::WriteWarnLog(L"A job of an earlier host is cancelled on the cluster: " + name);
               return CancelJobs(name, timeout);
           });
}

} // namespace

WaiterExit EndLostJobs(const std::wstring& prefix, const std::wstring& keptHost, void* host) {
    if (!platform::FindProgram(L"squeue") || !platform::FindProgram(L"scancel")) {
        ControllerCSWrapper::WriteErrorLog(
            L"The programs squeue and scancel are not in PATH: jobs that an earlier host "
            L"may have left on the cluster are not cancelled.");
        return WaiterExit::NotStarted;
    }
    while (!TryToEnd(prefix, keptHost)) {
        const std::vector<void*> handles = host == nullptr ? std::vector<void*>() : std::vector<void*>{host};
        if (platform::WaitForAny(handles, interval)) {
            return WaiterExit::HostEnded;
        }
    }
    return WaiterExit::Done;
}

} // namespace slurm
