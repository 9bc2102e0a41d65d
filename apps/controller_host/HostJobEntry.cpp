#include "controller_host/HostJobEntry.h"

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

bool HostJobEntry::OnCancelJob() {
    return platform::IsLink(info.workDir) || JobEntry::OnCancelJob();
}

void HostJobEntry::Requeue() {
    ChangeStatus(JobStatus::Queued);
    info.progress = 0;
    info.startTime.clear();
    info.endTime.clear();
    // At its end, a job's output directory becomes the directory that was created for it.
    if (!info.inputFiles.empty() && !outputFolder.empty() && info.outputDir == outputFolder) {
        info.outputDir = platform::ParentDirectory(outputFolder);
    }
    outputFolder.clear();
    failure.clear();
}

const QueueRecord& QueueRecordOf(const JobEntry& job) {
    static const QueueRecord defaults;
    const auto* const entry = dynamic_cast<const HostJobEntry*>(&job);
    return entry == nullptr ? defaults : entry->queue;
}
