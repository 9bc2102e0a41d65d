#include "controller_host/HostEngine.h"

#include "CommonControllerLib/PathFuncs.h"
#include "controller_host/HostJobEntry.h"
#include "formats/Provenance.h"
#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

void HostEngine::UpdateCandidates(const JobListChange& change) {
    if (!candidates) {
        return;
    }
    for (const auto& job : change.deleted) {
        candidates->Remove(job->GetJobListInfo());
    }
    for (const auto& job : change.jobs) {
        candidates->Update(job->GetJobListInfo());
    }
}

/// The jobs are put in order only when the first one of them asks for results of others.
std::vector<std::wstring> HostEngine::CandidatesOf(const JobEntry& job) {
    if (!candidates) {
        candidates.emplace();
        for (const auto& listed : jobList) {
            candidates->Update(listed->GetJobListInfo());
        }
    }
    return candidates->Of(job.GetJobListInfo());
}

provenance::RunContext HostEngine::ContextOf(const JobEntry& job) {
    const auto current = settings::Current();
    const QueueRecord& record = QueueRecordOf(job);
    provenance::RunContext context;
    context.attempt = record.attempt + 1;
    context.memoryLimitMiB = record.memoryLimitMiB.value_or(0);
    context.cpuLimitPercent = record.cpuLimitPercent.value_or(0);
    if (!current->provenance || !record.reuse.value_or(current->reuse)) {
        return context;
    }
    for (const std::wstring& id : CandidatesOf(job)) {
        if (const auto listed = index.WithId(id)) {
            const JobListInfo& earlier = (*listed->position)->GetJobListInfo();
            context.candidates.push_back({{earlier.id, earlier.seqId}, platform::ToNativeText(earlier.outputDir)});
        }
    }
    return context;
}

void HostEngine::WriteRunContext(const JobEntry& job) {
    const std::wstring path = PathFuncs::Join(job.GetWorkDir(), provenance::contextFileName);
    const provenance::RunContext context = ContextOf(job);
    if (platform::IsLink(job.GetWorkDir())) {
        return;
    }
    if (context == provenance::RunContext()) {
        // Of an earlier run; usually there is none.
        (void)platform::RemoveFile(path);
        return;
    }
    std::wstring problem;
    // If there is no directory, the function module says why. The function that writes logs a failure.
    if (run_protocol::MakeWorkDirectory(job.GetWorkDir(), problem)) {
        (void)run_protocol::WriteFile(provenance::Serialize(context), path);
    }
}
