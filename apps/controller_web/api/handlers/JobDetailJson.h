#pragma once

#include "formats/Scheduling.h"

#include <string>

namespace web {

/// {"version":1,"job":{...}}: all that is known about a job, also from the files of its directories. Threads: any.
std::wstring JobDetailJson(const ListedJob& job);

} // namespace web
