#pragma once

#include <memory>

#include <dirent.h>

namespace platform {

struct DirectoryCloser {
    void operator()(DIR* directory) const { closedir(directory); }
};

/// An open directory stream.
using DirectoryListing = std::unique_ptr<DIR, DirectoryCloser>;

} // namespace platform
