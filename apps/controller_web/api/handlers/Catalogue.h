#pragma once

#include "controller_web/api/Router.h"
#include "controller_web/api/handlers/Services.h"

namespace web {

Response GetScenarios(Services& services, const Call& call);
Response GetParameterSets(Services& services, const Call& call);

} // namespace web
