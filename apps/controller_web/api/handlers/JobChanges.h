#pragma once

#include "controller_web/api/Router.h"
#include "controller_web/api/handlers/Services.h"

namespace web {

Response PutQueue(Services& services, const Call& call);
Response PostJobs(Services& services, const Call& call);
Response CancelJobs(Services& services, const Call& call);
Response DeleteJobs(Services& services, const Call& call);
Response DeleteJob(Services& services, const Call& call);
Response RepeatJobs(Services& services, const Call& call);
Response EditJobs(Services& services, const Call& call);

} // namespace web
