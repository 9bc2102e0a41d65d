#include "formats/zip/ZipData.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

#include <zlib.h>

#include "formats/zip/ZipError.h"

namespace zip {
namespace {

constexpr std::size_t pieceSize = 64 * 1024;

/// The compressed bytes of an entry, in pieces.
class Source {
public:
    Source(const ArchiveFile& archiveFile, const Entry& entry)
        : archive(archiveFile), offset(entry.dataOffset), left(entry.facts.compressedSize) {}

    bool IsAtEnd() const { return left == 0; }

    /// Valid until the next call.
    std::string_view Next() {
        const std::size_t wanted = std::min<std::uint64_t>(left, pieceSize);
        archive.Read(offset, wanted, piece);
        offset += wanted;
        left -= wanted;
        return piece;
    }

private:
    const ArchiveFile& archive;
    std::uint64_t offset;
    std::uint64_t left;
    std::string piece;
};

/// Checks the size and the checksum of the content and passes it to the sink.
class Checker {
public:
    Checker(const Entry& checkedEntry, const Sink& target) : entry(checkedEntry), sink(target) {}

    void Take(std::string_view piece) {
        size += piece.size();
        if (size > entry.facts.size) {
            throw Problem{L"holds more than it says"};
        }
        crc = static_cast<std::uint32_t>(
            crc32(crc, reinterpret_cast<const Bytef*>(piece.data()), static_cast<uInt>(piece.size())));
        sink(piece);
    }

    void Finish() const {
        if (size != entry.facts.size) {
            throw Problem{L"holds less than it says"};
        }
        if (crc != entry.facts.crc) {
            throw Problem{L"is damaged: its checksum is wrong"};
        }
    }

private:
    const Entry& entry;
    const Sink& sink;
    std::uint64_t size = 0;
    std::uint32_t crc = 0;
};

class Inflater {
public:
    Inflater() {
        if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Inflater() { inflateEnd(&stream); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /// Returns true at the end of the deflated stream.
    bool Inflate(std::string_view input, Checker& checker) {
        stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(input.data())); // zlib does not write there
        stream.avail_in = static_cast<uInt>(input.size());
        do {
            if (InflatePiece(checker)) {
                return true;
            }
        } while (stream.avail_in > 0 || stream.avail_out == 0);
        return false;
    }

    bool HasInputLeft() const { return stream.avail_in > 0; }

private:
    bool InflatePiece(Checker& checker) {
        stream.next_out = reinterpret_cast<Bytef*>(output.data());
        stream.avail_out = static_cast<uInt>(output.size());
        const int result = inflate(&stream, Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
            throw Problem{L"is damaged: its data cannot be inflated"};
        }
        checker.Take(std::string_view(output).substr(0, output.size() - stream.avail_out));
        return result == Z_STREAM_END;
    }

    z_stream stream{};
    std::string output = std::string(pieceSize, '\0');
};

void InflateAll(Source& source, Checker& checker) {
    Inflater inflater;
    bool atEnd = false;
    while (!atEnd) {
        if (source.IsAtEnd()) {
            throw Problem{L"is damaged: its data end too early"};
        }
        atEnd = inflater.Inflate(source.Next(), checker);
    }
    if (inflater.HasInputLeft() || !source.IsAtEnd()) {
        throw Problem{L"is damaged: something follows its data"};
    }
}

void CopyAll(Source& source, Checker& checker) {
    while (!source.IsAtEnd()) {
        checker.Take(source.Next());
    }
}

} // namespace

void ReadData(const ArchiveFile& archive, const Entry& entry, const Sink& sink) {
    Source source(archive, entry);
    Checker checker(entry, sink);
    if (entry.isDeflated) {
        InflateAll(source, checker);
    } else {
        CopyAll(source, checker);
    }
    checker.Finish();
}

} // namespace zip
