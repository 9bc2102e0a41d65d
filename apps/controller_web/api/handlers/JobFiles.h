#pragma once

#include "controller_web/api/Router.h"
#include "controller_web/api/handlers/Services.h"

namespace web {

Response GetLog(Services& services, const Call& call);
Response GetFiles(Services& services, const Call& call);
Response GetFile(Services& services, const Call& call);
Response GetArchive(Services& services, const Call& call);

} // namespace web
