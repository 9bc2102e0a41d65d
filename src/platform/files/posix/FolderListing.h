#pragma once

#include <memory>

#include <dirent.h>

namespace platform {

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

/// A folder whose entries are read.
using FolderListing = std::unique_ptr<DIR, FolderCloser>;

} // namespace platform
