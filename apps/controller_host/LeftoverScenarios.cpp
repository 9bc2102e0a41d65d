#include "controller_host/LeftoverScenarios.h"

#include <vector>

#include "companion/ControllerCSWrapper.h"
#include "companion/RunProtocol.h"
#include "platform/FileSystem.h"
#include "support/ControllerLogManager.h"
#include "support/PathFuncs.h"

void StopLeftoverScenarios(const std::wstring& jobListFile) {
    std::vector<JobListInfo> jobs;
    ControllerCSWrapper::ParseJobList(jobListFile, jobs);
    for (const JobListInfo& job : jobs) {
        const bool active = job.status == JobStatus::Running || job.status == JobStatus::Canceling;
        if (active && platform::IsFolder(job.workDir)) {
            ControllerLogManager::WarnLog(L"Job: " + std::to_wstring(job.seqId) +
                                          L" was left running by an earlier host; its scenario is asked to stop.");
            platform::CreateEmptyFile(PathFuncs::Join(job.workDir, run_protocol::killFileName));
        }
    }
}
