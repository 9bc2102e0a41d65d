#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The records of the ZIP format, as bytes to values; limits on counts and sizes are the reader's business. Throws
/// `Problem` for what is damaged or of a kind that this application does not take.
namespace zip {

inline constexpr std::size_t endRecordSize = 22;
inline constexpr std::size_t localHeaderSize = 30;
inline constexpr std::size_t longestComment = 65535;
/// Without its optional signature of four bytes.
inline constexpr std::size_t dataDescriptorSize = 12;

struct EndRecord {
    std::uint32_t entryCount = 0;
    std::uint64_t directorySize = 0;
    std::uint64_t directoryOffset = 0;
};

/// Finds and reads the end record in the last bytes of an archive; the first of them stands at `offset`.
EndRecord ReadEndRecord(std::string_view lastBytes, std::uint64_t offset);

/// What the data of an entry are, as said in three places.
struct EntrySizes {
    std::uint32_t crc = 0;
    std::uint32_t compressedSize = 0;
    std::uint32_t size = 0;

    bool operator==(const EntrySizes&) const = default;
};

struct Entry {
    /// As it stands in the archive.
    std::string name;
    /// The same, checked, with slashes; a directory's ends in one.
    std::wstring path;
    std::uint16_t flags = 0;
    bool isDeflated = false;
    EntrySizes facts;
    std::uint64_t localOffset = 0;
    /// Where the data begin; known once the local header was read.
    std::uint64_t dataOffset = 0;

    bool IsDirectory() const { return name.back() == '/'; }
    /// Checksum and sizes stand behind the data.
    bool HasDataDescriptor() const { return (flags & 8) != 0; }
};

/// How a problem names an entry: `the entry "x" `.
std::wstring EntryLabel(std::string_view name);

/// Reads the central directory, which must consist of exactly `count` entries.
std::vector<Entry> ReadCentralDirectory(std::string_view bytes, std::uint32_t count);

/// Reads an entry's local header (`localHeaderSize` bytes and the name), which must agree with the directory. The
/// length of the extra field behind the name.
std::uint16_t CheckLocalHeader(std::string_view bytes, const Entry& entry);

/// Checks the data descriptor at the beginning of `bytes`, with or without its optional signature. Its length.
std::size_t CheckDataDescriptor(std::string_view bytes, const Entry& entry);

} // namespace zip
