#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace test_support {

/// One entry of a ZIP archive. The optional members replace correct values by wrong ones.
struct ZipEntry {
    /// With slashes; names of directories end in a slash.
    std::string name = {};
    std::string content = {};
    bool deflated = true;
    /// Sizes and checksum follow the data instead of preceding it.
    bool dataDescriptor = false;
    /// Extra flag bits, such as 1 (encrypted) or 0x800 (name in UTF-8).
    std::uint16_t flags = 0x800;
    std::uint16_t versionMadeBy = 20;
    /// The Unix mode is in the upper half.
    std::uint32_t externalAttributes = 0;
    std::string extraField = {};

    std::optional<std::uint16_t> method = {};
    std::optional<std::string> localName = {};
    std::optional<std::uint16_t> localMethod = {};
    std::optional<std::uint16_t> localFlags = {};
    std::optional<std::uint32_t> localCrc = {};
    std::optional<std::uint32_t> localSize = {};
    std::optional<std::uint32_t> localCompressedSize = {};
    std::optional<std::uint32_t> localOffset = {};
    std::optional<std::uint16_t> diskNumber = {};
    /// In the central directory, and in a data descriptor or local header that is not overridden.
    std::optional<std::uint32_t> crc = {};
    std::optional<std::uint32_t> size = {};
    std::optional<std::uint32_t> compressedSize = {};
    /// The data as stored in the archive.
    std::optional<std::string> rawData = {};
};

/// The end of the archive; like `ZipEntry`.
struct ZipEnd {
    std::string comment = {};
    std::optional<std::uint16_t> commentLength = {};
    std::uint16_t diskNumber = 0;
    std::optional<std::uint16_t> entryCount = {};
    std::optional<std::uint16_t> entryCountOfThisDisk = {};
    std::optional<std::uint32_t> directorySize = {};
    std::optional<std::uint32_t> directoryOffset = {};
    /// Inserted between the central directory and the end record.
    std::string beforeEndRecord = {};
};

/// The bytes of a ZIP archive. By default a valid one.
std::string MakeZip(const std::vector<ZipEntry>& entries, const ZipEnd& end = {});

} // namespace test_support
