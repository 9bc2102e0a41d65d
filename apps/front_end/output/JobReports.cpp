#include "front_end/output/JobReports.h"

#include <algorithm>

#include "front_end/commands/Problems.h"
#include "front_end/jobs/JobRow.h"
#include "front_end/output/StateJson.h"

namespace front_end {

void JobReports::Keep(const JobListInfo& job, JobStatus status, bool isDone, const std::wstring& line) {
    reports.push_back({job.seqId, job.id, StatusName(status), isDone, line});
}

void JobReports::Done(const JobListInfo& job, JobStatus status, const std::wstring& line) {
    Keep(job, status, true, line);
    if (!asJson) {
        context.console.Write(line + L"\n");
    }
}

void JobReports::NotDone(const JobListInfo& job, JobStatus status, const std::wstring& line) {
    Keep(job, status, false, line);
    WriteProblem(context, line);
}

ExitCode JobReports::Finish() {
    if (asJson) {
        context.console.Write(ReportsJson(reports));
    }
    const bool isWhole = std::all_of(reports.begin(), reports.end(), [](const JobReport& job) { return job.isDone; });
    return isWhole ? ExitCode::Success : ExitCode::JobFailed;
}

} // namespace front_end
