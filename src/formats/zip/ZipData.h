#pragma once

#include "formats/zip/ArchiveFile.h"
#include "formats/zip/ZipRecords.h"

#include <functional>
#include <string_view>

namespace zip {

/// Receives the content of an entry in pieces.
using Sink = std::function<void(std::string_view piece)>;

/// Passes the content of an entry to `sink`, never more than the entry's size, whatever the data contain. Throws
/// `Problem` if data, size and checksum do not agree; the pieces passed until then must be discarded.
void ReadData(const ArchiveFile& archive, const Entry& entry, const Sink& sink);

} // namespace zip
