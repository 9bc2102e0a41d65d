#pragma once

#include "controller_web/api/Router.h"
#include "controller_web/api/handlers/Services.h"

#include <string>
#include <vector>

namespace web {

/// The content of a directory that is one of `allowed` or below one of them (library text).
Response GetInputs(const std::vector<std::wstring>& allowed, const Call& call);
Response PostUpload(Services& services, const Call& call);

} // namespace web
