#pragma once

#include "controller_web/api/queue/JobStore.h"
#include "controller_web/http/Request.h"
#include "front_end/jobs/JobConditions.h"
#include "front_end/output/JsonOutput.h"

#include <cstddef>
#include <vector>

namespace web {

/// A column by which a list can be sorted.
struct SortColumn {
    const wchar_t* name;
    /// Jobs without a value come last, in either direction.
    bool (*hasValue)(const ListedJob& job);
    /// Negative, 0 or positive.
    int (*compare)(const ListedJob& left, const ListedJob& right);
};

/// What a client wants to see of the list of jobs.
struct JobListQuery {
    front_end::JobConditions conditions;
    const SortColumn* sort = nullptr;
    bool isDescending = false;
    std::size_t offset = 0;
    std::size_t limit = 0;
    front_end::JobMembers members;
};

/// Reads the parameters of a query. Throws `ApiError` for an unknown parameter or a wrong value.
JobListQuery ReadJobListQuery(const Request& request);

/// A part of a list. The rows belong to the snapshot.
struct JobPage {
    std::vector<const front_end::JobRow*> rows;
    /// The number of jobs that meet the conditions.
    std::size_t total = 0;
};

JobPage PageOf(const Snapshot& snapshot, const JobListQuery& query);

} // namespace web
