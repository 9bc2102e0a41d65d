#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"

#include <cstdint>
#include <string>
#include <vector>

namespace front_end {

/// What became of one job of a request.
struct JobReport {
    std::int32_t number = 0;
    std::wstring id = {};
    /// The name of its state now.
    std::wstring status = {};
    bool isDone = false;
    /// For people, in their language.
    std::wstring message = {};
};

/// Tells what became of the jobs of a request: a line for each at once, or with JSON one document at the end. What was
/// not done is also told on standard error. The context must outlive this object.
class JobReports {
public:
    JobReports(CommandContext& commandContext, bool isJson) : context(commandContext), asJson(isJson) {}

    void Done(const JobListInfo& job, JobStatus status, const std::wstring& line);
    void NotDone(const JobListInfo& job, JobStatus status, const std::wstring& line);
    /// Called once, after the reports. Returns `JobFailed` if something was not done.
    ExitCode Finish();
    /// The reports so far.
    const std::vector<JobReport>& Reports() const { return reports; }

private:
    void Keep(const JobListInfo& job, JobStatus status, bool isDone, const std::wstring& line);

    CommandContext& context;
    bool asJson;
    std::vector<JobReport> reports;
};

} // namespace front_end
