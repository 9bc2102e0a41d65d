#pragma once

#include "formats/zip/ArchiveFile.h"
#include "formats/zip/ZipRecords.h"

#include <functional>
#include <string_view>

namespace zip {

/// Takes the content of an entry piece by piece.
using Sink = std::function<void(std::string_view piece)>;

/// Hands the content of an entry to `sink`, and never more than the entry's size, whatever the data hold. Throws
/// `Problem` when data, size and checksum do not agree; what was handed over by then is worthless.
void ReadData(const ArchiveFile& archive, const Entry& entry, const Sink& sink);

} // namespace zip
