#pragma once

#include "controller_web/api/files/FilesBelow.h"
#include "controller_web/http/Response.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace web {

/// The most bytes of an archive's content: the format of 1989 has 32 bits for sizes and offsets. Units: bytes.
inline constexpr std::uint64_t largestArchive = 0xF000'0000;

/// An archive of these files below `root`, which is made while it is read. A file that cannot be read, or has grown
/// beyond `largestArchive`, ends the reading with a failure.
std::unique_ptr<ContentReader> MakeZipStream(const std::wstring& root, const std::vector<FoundEntry>& files);

} // namespace web
