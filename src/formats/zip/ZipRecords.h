#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/zip/ZipError.h"

/// The records of the ZIP format, parsed from bytes; the caller checks limits on counts and sizes. Throws `Problem` for
/// damaged records and unsupported features.
namespace zip {

inline constexpr std::size_t endRecordSize = 22;
inline constexpr std::size_t localHeaderSize = 30;
inline constexpr std::size_t longestComment = 65535;
/// Excludes the optional signature of four bytes.
inline constexpr std::size_t dataDescriptorSize = 12;

struct EndRecord {
    std::uint32_t entryCount = 0;
    std::uint64_t directorySize = 0;
    std::uint64_t directoryOffset = 0;
};

/// Finds and parses the end record in the last bytes of an archive, which start at `offset`.
EndRecord ReadEndRecord(std::string_view lastBytes, std::uint64_t offset);

/// Checksum and sizes of an entry's data, which an archive stores in three places.
struct EntrySizes {
    std::uint32_t crc = 0;
    std::uint32_t compressedSize = 0;
    std::uint32_t size = 0;

    bool operator==(const EntrySizes&) const = default;
};

struct Entry {
    /// The name as stored in the archive.
    std::string name;
    /// The checked name with slashes; that of a directory ends in a slash.
    std::wstring path;
    std::uint16_t flags = 0;
    bool isDeflated = false;
    EntrySizes facts;
    std::uint64_t localOffset = 0;
    /// The offset of the data; set after the local header was read.
    std::uint64_t dataOffset = 0;

    bool IsDirectory() const { return name.back() == '/'; }
    /// True if checksum and sizes follow the data.
    bool HasDataDescriptor() const { return (flags & 8) != 0; }
};

/// Formats the name of an entry for a problem: `the entry "x" `.
std::wstring EntryLabel(std::string_view name);

/// The problem of one entry. `text` follows its name.
Problem EntryProblem(std::string_view name, const std::wstring& text);

/// Parses the central directory, which must consist of exactly `count` entries.
std::vector<Entry> ReadCentralDirectory(std::string_view bytes, std::uint32_t count);

/// Parses an entry's local header (`localHeaderSize` bytes and the name), which must agree with the directory. Returns
/// the length of the extra field that follows the name.
std::uint16_t CheckLocalHeader(std::string_view bytes, const Entry& entry);

/// Checks the data descriptor at the beginning of `bytes`, with or without its optional signature. Returns its length.
std::size_t CheckDataDescriptor(std::string_view bytes, const Entry& entry);

} // namespace zip
