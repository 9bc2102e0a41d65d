#include "kit/ZipWriter.h"

#include <stdexcept>

#include <zlib.h>

namespace test_support {
namespace {

constexpr std::uint16_t dataDescriptorFlag = 8;

void Append16(std::string& bytes, std::uint32_t value) {
    bytes += static_cast<char>(value & 0xff);
    bytes += static_cast<char>((value >> 8) & 0xff);
}

void Append32(std::string& bytes, std::uint32_t value) {
    Append16(bytes, value & 0xffff);
    Append16(bytes, value >> 16);
}

std::uint32_t Length(const std::string& text) {
    return static_cast<std::uint32_t>(text.size());
}

std::string Deflated(const std::string& content) {
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 9, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("deflateInit2");
    }
    std::string packed(deflateBound(&stream, static_cast<uInt>(content.size())), '\0');
    std::string source = content;
    stream.next_in = reinterpret_cast<Bytef*>(source.data());
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int result = deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    if (result != Z_STREAM_END) {
        throw std::runtime_error("deflate");
    }
    return packed;
}

std::uint32_t Checksum(const std::string& content) {
    return static_cast<std::uint32_t>(
        crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size())));
}

/// The header fields of one entry.
struct Statement {
    std::uint16_t flags;
    std::uint16_t method;
    std::uint32_t crc;
    std::uint32_t compressedSize;
    std::uint32_t size;
};

Statement CentralStatement(const ZipEntry& entry, const std::string& data) {
    const auto flags = static_cast<std::uint16_t>(entry.flags | (entry.dataDescriptor ? dataDescriptorFlag : 0));
    return {flags, entry.method.value_or(static_cast<std::uint16_t>(entry.deflated ? Z_DEFLATED : 0)),
            entry.crc.value_or(Checksum(entry.content)), entry.compressedSize.value_or(Length(data)),
            entry.size.value_or(Length(entry.content))};
}

Statement LocalStatement(const ZipEntry& entry, const Statement& central) {
    const bool later = entry.dataDescriptor;
    return {entry.localFlags.value_or(central.flags), entry.localMethod.value_or(central.method),
            entry.localCrc.value_or(later ? 0 : central.crc),
            entry.localCompressedSize.value_or(later ? 0 : central.compressedSize),
            entry.localSize.value_or(later ? 0 : central.size)};
}

/// The fields that local header and central directory have in common.
void AppendStatement(std::string& bytes, const Statement& statement, const std::string& name,
                     const std::string& extraField) {
    Append16(bytes, 20); // version needed
    Append16(bytes, statement.flags);
    Append16(bytes, statement.method);
    Append32(bytes, 0x58210000); // 2024-01-01 00:00
    Append32(bytes, statement.crc);
    Append32(bytes, statement.compressedSize);
    Append32(bytes, statement.size);
    Append16(bytes, Length(name));
    Append16(bytes, Length(extraField));
}

void AppendDescriptor(std::string& bytes, const Statement& statement) {
    Append32(bytes, 0x08074b50);
    Append32(bytes, statement.crc);
    Append32(bytes, statement.compressedSize);
    Append32(bytes, statement.size);
}

void AppendLocal(std::string& bytes, const ZipEntry& entry, const Statement& central, const std::string& data) {
    const std::string& name = entry.localName ? *entry.localName : entry.name;
    Append32(bytes, 0x04034b50);
    AppendStatement(bytes, LocalStatement(entry, central), name, {});
    bytes += name + data;
    if (entry.dataDescriptor) {
        AppendDescriptor(bytes, central);
    }
}

void AppendCentral(std::string& bytes, const ZipEntry& entry, const Statement& central, std::uint32_t localOffset) {
    Append32(bytes, 0x02014b50);
    Append16(bytes, entry.versionMadeBy);
    AppendStatement(bytes, central, entry.name, entry.extraField);
    Append16(bytes, 0); // comment
    Append16(bytes, entry.diskNumber.value_or(std::uint16_t{0}));
    Append16(bytes, 0); // internal attributes
    Append32(bytes, entry.externalAttributes);
    Append32(bytes, entry.localOffset.value_or(localOffset));
    bytes += entry.name + entry.extraField;
}

void AppendEnd(std::string& bytes, const ZipEnd& end, std::uint32_t entryCount, std::uint32_t directorySize) {
    const std::uint32_t directoryOffset = Length(bytes) - directorySize;
    bytes += end.beforeEndRecord;
    Append32(bytes, 0x06054b50);
    Append16(bytes, end.diskNumber);
    Append16(bytes, 0); // disk of the directory
    const std::uint16_t count = end.entryCount.value_or(static_cast<std::uint16_t>(entryCount));
    Append16(bytes, end.entryCountOfThisDisk.value_or(count));
    Append16(bytes, count);
    Append32(bytes, end.directorySize.value_or(directorySize));
    Append32(bytes, end.directoryOffset.value_or(directoryOffset));
    Append16(bytes, end.commentLength.value_or(static_cast<std::uint16_t>(end.comment.size())));
    bytes += end.comment;
}

} // namespace

std::string MakeZip(const std::vector<ZipEntry>& entries, const ZipEnd& end) {
    std::string bytes;
    std::string directory;
    for (const ZipEntry& entry : entries) {
        const std::string data =
            entry.rawData ? *entry.rawData : (entry.deflated ? Deflated(entry.content) : entry.content);
        const Statement central = CentralStatement(entry, data);
        AppendCentral(directory, entry, central, Length(bytes));
        AppendLocal(bytes, entry, central, data);
    }
    bytes += directory;
    AppendEnd(bytes, end, static_cast<std::uint32_t>(entries.size()), Length(directory));
    return bytes;
}

} // namespace test_support
