#pragma once

#include "formats/zip/ArchiveFile.h"
#include "formats/zip/ZipData.h"
#include "formats/zip/ZipRecords.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zip {

/// Units: bytes.
inline constexpr std::size_t largestArchive = std::size_t{512} * 1024 * 1024;

/// A validated ZIP file; the data of an entry are checked when they are read. The central directory is authoritative,
/// and local headers must agree with it. Limits: 512 MiB, 10,000 entries, 1 GiB of content; an entry above 1 MiB may be
/// compressed by at most 1000 to 1; entries must not overlap. Threads: one at a time.
class Archive {
public:
    /// Throws `Problem` if the file is not a valid archive.
    explicit Archive(const std::wstring& path);

    const std::vector<Entry>& Entries() const { return entries; }
    /// Returns null if there is no file of this name. The archive owns the entry.
    const Entry* Find(std::string_view name) const;
    /// Reads as `ReadData` does; the problem includes the name of the entry.
    void Read(const Entry& entry, const Sink& sink) const;

private:
    std::string Bytes(std::uint64_t offset, std::uint64_t count) const;
    EndRecord FindEnd() const;
    void ReadDirectory(const EndRecord& end);
    void LocateData(std::uint64_t directoryOffset);
    std::uint64_t LocateEntry(Entry& entry, std::uint64_t freeFrom, std::uint64_t directoryOffset) const;

    ArchiveFile file;
    std::vector<Entry> entries;
};

} // namespace zip
