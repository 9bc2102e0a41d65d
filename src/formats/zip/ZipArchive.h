#pragma once

#include "formats/zip/ArchiveFile.h"
#include "formats/zip/ZipData.h"
#include "formats/zip/ZipRecords.h"

#include <string>
#include <string_view>
#include <vector>

namespace zip {

/// A ZIP file that was found to be sound but for the entries' data, which are checked when they are read. The central
/// directory says what there is; local headers must agree with it. Limits: 512 MiB, 10,000 entries, 1 GiB of content,
/// of which none above 1 MiB packed by more than 1000 to 1. Nothing overlaps. One thread at a time.
class Archive {
public:
    /// Throws `Problem`.
    explicit Archive(const std::wstring& path);

    const std::vector<Entry>& Entries() const { return entries; }
    /// Null when there is no file of this name.
    const Entry* Find(std::string_view name) const;
    /// As `ReadData`; the problem names the entry.
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
