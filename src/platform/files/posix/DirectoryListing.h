#pragma once

#include <memory>

#include <dirent.h>

namespace platform {

struct DirectoryCloser {
    void operator()(DIR* directory) const { closedir(directory); }
};

/// A directory whose entries are read.
using DirectoryListing = std::unique_ptr<DIR, DirectoryCloser>;

} // namespace platform
