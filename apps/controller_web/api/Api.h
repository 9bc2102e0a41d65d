#pragma once

#include "controller_web/http/Handler.h"
#include "front_end/commands/CommandContext.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace web {

struct ApiOptions {
    /// Only reported; the server refuses the requests.
    bool isReadOnly = false;
};

/// What the interface works with; the tests replace parts of it.
struct ApiParts {
    bool isReadOnly = false;
    /// What it refers to outlives the interface, which alone uses it.
    front_end::CommandContext context;
    /// Relative paths in requests are relative to it.
    std::wstring baseDirectory;
    /// Where uploaded files are stored.
    std::wstring uploadDirectory;
    /// The directories in which clients may look for input files.
    std::function<std::vector<std::wstring>()> inputDirectories;
};

/// Makes the handler of all requests below "/api/v1" and of "/metrics", with the host and directories of the settings.
/// It has threads of its own, which end with it; this takes at most as long as one request to the host.
std::unique_ptr<Handler> MakeApi(const ApiOptions& options);
std::unique_ptr<Handler> MakeApi(const ApiParts& parts);

} // namespace web
