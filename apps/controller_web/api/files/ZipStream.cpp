#include "controller_web/api/files/ZipStream.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

#include <zlib.h>

#include "text/Text.h"

namespace web {
namespace {

constexpr std::size_t blockSize = std::size_t{64} << 10;
/// Checksum and sizes follow the data; names are UTF-8.
constexpr std::uint16_t flags = 0x0808;
constexpr std::uint16_t version = 20;
constexpr std::uint16_t deflated = 8;

void Append16(std::uint32_t value, std::string& bytes) {
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>(value >> 8 & 0xFF);
}

void Append32(std::uint64_t value, std::string& bytes) {
    Append16(static_cast<std::uint32_t>(value & 0xFFFF), bytes);
    Append16(static_cast<std::uint32_t>(value >> 16 & 0xFFFF), bytes);
}

/// The record's time has two seconds of resolution and begins in 1980.
struct DosTime {
    std::uint32_t date = 0x21;
    std::uint32_t time = 0;

    explicit DosTime(std::int64_t seconds) {
        using namespace std::chrono;
        const sys_seconds point{std::chrono::seconds(seconds)};
        const year_month_day day{floor<days>(point)};
        const hh_mm_ss clock{point - floor<days>(point)};
        const int years = static_cast<int>(day.year()) - 1980;
        if (years >= 0 && years < 128) {
            date = static_cast<std::uint32_t>(years) << 9 | static_cast<unsigned>(day.month()) << 5 |
                   static_cast<unsigned>(day.day());
            time = static_cast<std::uint32_t>(clock.hours().count()) << 11 |
                   static_cast<std::uint32_t>(clock.minutes().count()) << 5 |
                   static_cast<std::uint32_t>(clock.seconds().count()) / 2;
        }
    }
};

/// One file of the archive. Units: bytes.
struct Member {
    std::string name;
    DosTime modified;
    std::uint32_t checksum = 0;
    std::uint64_t size = 0;
    std::uint64_t compressed = 0;
    std::uint64_t offset = 0;

    void AppendSizes(std::string& bytes) const {
        Append32(checksum, bytes);
        Append32(compressed, bytes);
        Append32(size, bytes);
    }

    /// What local header and central directory share.
    void AppendStart(std::string& bytes) const {
        Append16(version, bytes);
        Append16(flags, bytes);
        Append16(deflated, bytes);
        Append16(modified.time, bytes);
        Append16(modified.date, bytes);
    }

    void AppendLocalHeader(std::string& bytes) const {
        bytes += "PK\3\4";
        AppendStart(bytes);
        bytes.append(12, '\0');
        Append16(static_cast<std::uint32_t>(name.size()), bytes);
        Append16(0, bytes);
        bytes += name;
    }

    void AppendDirectoryRecord(std::string& bytes) const {
        bytes += "PK\1\2";
        Append16(version, bytes);
        AppendStart(bytes);
        AppendSizes(bytes);
        Append16(static_cast<std::uint32_t>(name.size()), bytes);
        bytes.append(12, '\0');
        Append32(offset, bytes);
        bytes += name;
    }
};

/// Compresses one file after another.
class Deflater {
public:
    Deflater() {
        // Raw data, without header. Fails only without memory, which `Take` then reports.
        isReady = deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) == Z_OK;
    }
    ~Deflater() { deflateEnd(&stream); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    /// Appends what the block becomes. Returns false on failure.
    [[nodiscard]] bool Take(std::string& block, bool isLast, std::string& bytes) {
        stream.next_in = reinterpret_cast<Bytef*>(block.data());
        stream.avail_in = static_cast<uInt>(block.size());
        int result = Z_OK;
        do {
            std::string part(blockSize, '\0');
            stream.next_out = reinterpret_cast<Bytef*>(part.data());
            stream.avail_out = static_cast<uInt>(part.size());
            result = isReady ? deflate(&stream, isLast ? Z_FINISH : Z_NO_FLUSH) : Z_MEM_ERROR;
            bytes.append(part, 0, part.size() - stream.avail_out);
        } while (result == Z_OK && stream.avail_out == 0);
        return isLast ? result == Z_STREAM_END && deflateReset(&stream) == Z_OK
                      : result == Z_OK || result == Z_BUF_ERROR;
    }

private:
    z_stream stream{};
    bool isReady = false;
};

class ZipStream final : public ContentReader {
public:
    ZipStream(std::wstring rootDirectory, const std::vector<FoundEntry>& files)
        : root(std::move(rootDirectory)), entries(files) {}

    std::optional<std::uint64_t> Size() const override { return std::nullopt; }

    std::optional<std::size_t> Read(std::span<char> block) override {
        while (taken == pending.size() && !isAtEnd) {
            pending.clear();
            taken = 0;
            if (!Continue()) {
                return std::nullopt;
            }
        }
        const std::size_t count = std::min(block.size(), pending.size() - taken);
        std::memcpy(block.data(), pending.data() + taken, count);
        taken += count;
        return count;
    }

private:
    /// Appends the next part to `pending`. Returns false on failure.
    [[nodiscard]] bool Continue() {
        const std::uint64_t before = written;
        const bool isDone = file.IsOpen() ? ContinueFile() : (next < entries.size() ? BeginFile() : AddDirectory());
        written = before + pending.size();
        return isDone && written < largestArchive;
    }

    [[nodiscard]] bool BeginFile() {
        const FoundEntry& entry = entries[next++];
        if (!OpenFileBelow(root, NamesOf(entry.path), file)) {
            return false;
        }
        Member& member = members.emplace_back(Member{text::ToUtf8(entry.path), DosTime(entry.modified)});
        member.offset = written;
        member.AppendLocalHeader(pending);
        return true;
    }

    [[nodiscard]] bool ContinueFile() {
        Member& member = members.back();
        std::string block(blockSize, '\0');
        std::size_t count = 0;
        if (!file.Read(block.data(), block.size(), count)) {
            return false;
        }
        block.resize(count);
        member.size += count;
        member.checksum = static_cast<std::uint32_t>(
            crc32(member.checksum, reinterpret_cast<const Bytef*>(block.data()), static_cast<uInt>(count)));
        const bool isDone = deflater.Take(block, count == 0, pending);
        member.compressed += pending.size();
        if (count == 0) {
            file.Close();
            pending += "PK\7\10";
            member.AppendSizes(pending);
        }
        return isDone && member.size < largestArchive;
    }

    [[nodiscard]] bool AddDirectory() {
        for (const Member& member : members) {
            member.AppendDirectoryRecord(pending);
        }
        const std::size_t size = pending.size();
        pending += "PK\5\6";
        Append32(0, pending);
        Append16(static_cast<std::uint32_t>(members.size()), pending);
        Append16(static_cast<std::uint32_t>(members.size()), pending);
        Append32(size, pending);
        Append32(written, pending);
        Append16(0, pending);
        isAtEnd = true;
        return true;
    }

    static std::vector<std::wstring> NamesOf(const std::wstring& path) {
        std::vector<std::wstring> names;
        for (std::size_t begin = 0; begin <= path.size();) {
            const std::size_t end = std::min(path.find(L'/', begin), path.size());
            names.push_back(path.substr(begin, end - begin));
            begin = end + 1;
        }
        return names;
    }

    const std::wstring root;
    const std::vector<FoundEntry> entries;
    std::size_t next = 0;
    platform::File file;
    Deflater deflater;
    std::vector<Member> members;
    std::string pending;
    /// Of `pending`.
    std::size_t taken = 0;
    /// The bytes of the archive before `pending`.
    std::uint64_t written = 0;
    bool isAtEnd = false;
};

} // namespace

std::unique_ptr<ContentReader> MakeZipStream(const std::wstring& root, const std::vector<FoundEntry>& files) {
    return std::make_unique<ZipStream>(root, files);
}

} // namespace web
