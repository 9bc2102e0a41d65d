#pragma once

#include "controller_cli/CommandContext.h"
#include "records/JobRecords.h"

#include <cstddef>
#include <optional>
#include <string>

namespace controller_cli {

/// What the host has refused.
struct Refusal {
    const EnqueueJobsInfo& request;
    /// Nothing: a request without input sets.
    std::optional<std::size_t> inputSet = std::nullopt;
    /// No job of the request was made.
    bool isWhole = true;
};

/// Why. The host tells that it refused, not why: what it looks at is looked at again here, on the same machine, so the
/// reason may be another one when a file was made or removed meanwhile.
std::wstring RefusalReason(const CommandContext& context, const Refusal& refusal);

} // namespace controller_cli
