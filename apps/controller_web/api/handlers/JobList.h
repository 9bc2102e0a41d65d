#pragma once

#include "controller_web/api/Router.h"
#include "controller_web/api/handlers/Services.h"

namespace web {

Response GetJobs(Services& services, const Call& call);
Response GetJob(Services& services, const Call& call);
Response GetQueue(Services& services, const Call& call);

} // namespace web
