#pragma once

#include "controller_c/OwnedEngine.h"

#include <string>
#include <vector>

/// The JSON documents that only this library writes; the others are those of the front ends.
namespace controller_c {

/// {"version":1,"jobs":[{"number":1,"id":"51f10dd4"}]}
std::wstring EnqueuedJson(std::vector<OwnedEngine::EnqueuedJob> jobs);
/// {"version":1,"deleted":["51f10dd4"]}
std::wstring DeletedJson(std::vector<std::wstring> ids);

} // namespace controller_c
