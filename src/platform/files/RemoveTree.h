#pragma once

#include <string>

#include "platform/system/Error.h"

namespace platform {

/// Removes a directory with its content, of any depth. Links and junctions inside are removed and never followed;
/// read-only entries are removed, too. Fails with `NotSupported` if `path` itself is a link or file. Entries that
/// cannot be removed are left (on Linux also those of file systems mounted inside); the removal continues, and the
/// first failure is returned.
Error RemoveTree(const std::wstring& path);

} // namespace platform
