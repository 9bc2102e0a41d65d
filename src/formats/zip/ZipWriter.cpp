#include "formats/zip/ZipWriter.h"

#include <cstdint>
#include <limits>
#include <new>
#include <utility>

#include <zlib.h>

#include "formats/zip/ZipError.h"
#include "formats/zip/ZipName.h"

namespace zip {
namespace {

constexpr std::uint16_t versionNeeded = 20;   // deflate
constexpr std::uint16_t namesAreUtf8 = 0x800; // a flag
constexpr std::uint16_t methodStored = 0;
constexpr std::uint16_t methodDeflated = 8;
constexpr std::uint16_t firstTime = 0;
constexpr std::uint16_t firstDate = 0x21; // 1980-01-01
/// A reader refuses data that grow too much; the same limit with a margin.
constexpr std::size_t highestRatio = 900;

void Put16(std::string& bytes, std::size_t number) {
    bytes += static_cast<char>(number & 0xff);
    bytes += static_cast<char>((number >> 8) & 0xff);
}

void Put32(std::string& bytes, std::size_t number) {
    Put16(bytes, number & 0xffff);
    Put16(bytes, number >> 16);
}

class Deflater {
public:
    Deflater() {
        if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Deflater() { deflateEnd(&stream); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    std::string Deflate(std::string_view content) {
        const auto size = static_cast<uInt>(content.size());
        std::string packed(deflateBound(&stream, size), '\0');
        stream.next_in =
            const_cast<Bytef*>(reinterpret_cast<const Bytef*>(content.data())); // zlib does not write there
        stream.avail_in = size;
        stream.next_out = reinterpret_cast<Bytef*>(packed.data());
        stream.avail_out = static_cast<uInt>(packed.size());
        if (deflate(&stream, Z_FINISH) != Z_STREAM_END) {
            throw Problem{L"cannot be compressed"};
        }
        packed.resize(stream.total_out);
        return packed;
    }

private:
    z_stream stream{};
};

/// What the local header and the directory have in common.
struct Facts {
    std::uint16_t method = methodStored;
    std::size_t crc = 0;
    std::size_t compressedSize = 0;
    std::size_t size = 0;
    std::size_t nameLength = 0;
};

void PutFacts(const Facts& facts, std::string& bytes) {
    Put16(bytes, versionNeeded);
    Put16(bytes, namesAreUtf8);
    Put16(bytes, facts.method);
    Put16(bytes, firstTime);
    Put16(bytes, firstDate);
    Put32(bytes, facts.crc);
    Put32(bytes, facts.compressedSize);
    Put32(bytes, facts.size);
    Put16(bytes, facts.nameLength);
    Put16(bytes, 0); // extra field
}

} // namespace

void Writer::Add(std::string_view name, std::string_view content) {
    (void)CheckedName(name);
    if (content.size() >= std::numeric_limits<std::uint32_t>::max()) {
        throw Problem{L"has 4 GiB or more"};
    }
    const std::string packed = Deflater().Deflate(content);
    const bool isDeflated = packed.size() < content.size() && content.size() < highestRatio * packed.size();
    const std::string_view data = isDeflated ? std::string_view(packed) : content;
    const auto crc = crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()));
    const Facts facts{isDeflated ? methodDeflated : methodStored, crc, data.size(), content.size(), name.size()};
    directory += "PK\1\2";
    Put16(directory, versionNeeded); // made by
    PutFacts(facts, directory);
    Put16(directory, 0); // comment
    Put16(directory, 0); // disk
    Put16(directory, 0); // internal attributes
    Put32(directory, 0); // external attributes
    Put32(directory, bytes.size());
    directory.append(name);
    bytes += "PK\3\4";
    PutFacts(facts, bytes);
    bytes.append(name).append(data);
    ++count;
}

std::string Writer::Finish() {
    const std::size_t offset = bytes.size();
    bytes += directory;
    bytes += "PK\5\6";
    Put32(bytes, 0); // disks
    Put16(bytes, count);
    Put16(bytes, count);
    Put32(bytes, directory.size());
    Put32(bytes, offset);
    Put16(bytes, 0); // comment
    return std::move(bytes);
}

} // namespace zip
