#pragma once

#include "controller_cli/CommandContext.h"

#include <set>
#include <string>

namespace controller_cli {

/// Says on standard error, one line a file, that a job list could not be read and is kept aside, so that jobs may be
/// missing: until somebody has removed or renamed the file. Durability no part of its context.
class DamagedListNotice {
public:
    explicit DamagedListNotice(CommandContext& commandContext) : context(commandContext) {}

    /// Tells of the files that were not told of yet.
    void Tell();

private:
    CommandContext& context;
    std::set<std::wstring> told;
};

} // namespace controller_cli
