#pragma once

#include "front_end/commands/CommandContext.h"

#include <set>
#include <string>

namespace front_end {

/// Warns on standard error, with one line per file, that an unreadable job list was quarantined and jobs may be
/// missing, until the user removes or renames the file. The context must outlive this object.
class DamagedListNotice {
public:
    explicit DamagedListNotice(CommandContext& commandContext) : context(commandContext) {}

    /// Reports the files that have not been reported yet.
    void Tell();

private:
    CommandContext& context;
    std::set<std::wstring> told;
};

} // namespace front_end
