#pragma once

#include "formats/Scheduling.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JobReports.h"

#include <vector>

/// What commands do with jobs that are already selected. Each reports what became of every job, and throws like
/// `HostSession`. Without jobs nothing is done.
namespace front_end::actions {

/// Dequeues waiting jobs and asks running ones to stop.
void Cancel(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs, JobReports& reports);
/// The same for all jobs; reports those in `jobs` and newer ones.
void CancelAll(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs, JobReports& reports);
/// Deletes jobs that do not run, with their work directories.
void Delete(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs, JobReports& reports);
/// Enqueues new jobs with what ended ones were made of; the reports are about the new jobs.
void Repeat(CommandContext& context, HostSession& session, std::vector<ListedJob> jobs, JobReports& reports);
/// Changes jobs that wait. `outcome` is the key of the text about a changed job.
void Edit(CommandContext& context, HostSession& session, const std::vector<ListedJob>& jobs, JobsEdit edit,
          const wchar_t* outcome, JobReports& reports);

} // namespace front_end::actions
