#pragma once

#include "controller_web/api/files/LogFeeds.h"
#include "controller_web/api/files/Uploads.h"
#include "controller_web/api/queue/HostThread.h"
#include "controller_web/api/queue/JobStore.h"
#include "controller_web/api/queue/QueueTracker.h"

#include <string>
#include <vector>

namespace web {

/// What handlers use. All members outlive the handlers.
struct Services {
    QueueTracker& tracker;
    HostThread& hosts;
    LogFeeds& logs;
    Uploads& uploads;
    /// Relative paths in requests are relative to it.
    std::wstring baseDirectory;
};

/// The job with this id or number, also one that is new. Throws `ApiError` if there is none, and like
/// `HostThread::Run`.
Row RequireJob(Services& services, const std::string& name);

/// The same with all its data, as the host lists it now.
ListedJob FetchJob(Services& services, const std::string& name);

} // namespace web
