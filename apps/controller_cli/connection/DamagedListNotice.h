#pragma once

#include "controller_cli/commands/CommandContext.h"

#include <set>
#include <string>

namespace controller_cli {

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

} // namespace controller_cli
