#include "platform/system/posix/NeededLibraries.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <optional>

#include <elf.h>
#include <link.h>

namespace platform {
namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Entry = ElfW(Dyn);

/// Upper limit, far above the number in any real library.
constexpr std::size_t mostEntries = 4096;
constexpr std::size_t mostNameBytes = std::size_t{4} << 20;

/// Reads `count` records of the file; fewer at the end of the file.
template <typename Record>
std::vector<Record> ReadRecords(std::ifstream& file, std::uint64_t offset, std::size_t count) {
    std::vector<Record> records(count);
    file.clear();
    file.seekg(static_cast<std::streamoff>(offset));
    file.read(reinterpret_cast<char*>(records.data()), static_cast<std::streamsize>(count * sizeof(Record)));
    records.resize(static_cast<std::size_t>(file.gcount()) / sizeof(Record));
    return records;
}

constexpr unsigned char ownClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

std::vector<Segment> ReadSegments(std::ifstream& file) {
    const std::vector<Header> headers = ReadRecords<Header>(file, 0, 1);
    const bool isElf = !headers.empty() && std::memcmp(headers[0].e_ident, ELFMAG, SELFMAG) == 0;
    if (!isElf || headers[0].e_ident[EI_CLASS] != ownClass || headers[0].e_phentsize != sizeof(Segment)) {
        return {};
    }
    return ReadRecords<Segment>(file, headers[0].e_phoff, headers[0].e_phnum);
}

std::vector<Entry> ReadEntries(std::ifstream& file, const std::vector<Segment>& segments) {
    const auto dynamic = std::find_if(segments.begin(), segments.end(),
                                      [](const Segment& segment) { return segment.p_type == PT_DYNAMIC; });
    if (dynamic == segments.end()) {
        return {};
    }
    const auto count = std::min<std::uint64_t>(dynamic->p_filesz / sizeof(Entry), mostEntries);
    return ReadRecords<Entry>(file, dynamic->p_offset, static_cast<std::size_t>(count));
}

std::optional<std::uint64_t> ValueOf(const std::vector<Entry>& entries, std::int64_t tag) {
    const auto found =
        std::find_if(entries.begin(), entries.end(), [tag](const Entry& entry) { return entry.d_tag == tag; });
    return found == entries.end() ? std::nullopt : std::optional<std::uint64_t>(found->d_un.d_val);
}

/// The file offset of the byte that is loaded to an address.
std::optional<std::uint64_t> OffsetOf(const std::vector<Segment>& segments, std::uint64_t address) {
    for (const Segment& segment : segments) {
        if (segment.p_type == PT_LOAD && address >= segment.p_vaddr && address - segment.p_vaddr < segment.p_filesz) {
            return address - segment.p_vaddr + segment.p_offset;
        }
    }
    return std::nullopt;
}

/// The string table, with a terminating zero.
std::vector<char> ReadNames(std::ifstream& file, const std::vector<Segment>& segments,
                            const std::vector<Entry>& entries) {
    const auto offset = OffsetOf(segments, ValueOf(entries, DT_STRTAB).value_or(0));
    const std::uint64_t size = ValueOf(entries, DT_STRSZ).value_or(0);
    std::vector<char> names;
    if (offset && size <= mostNameBytes) {
        names = ReadRecords<char>(file, *offset, static_cast<std::size_t>(size));
    }
    names.push_back('\0');
    return names;
}

} // namespace

std::vector<std::string> NeededLibraries(const std::string& systemPath) {
    std::ifstream file(systemPath, std::ios::binary);
    const std::vector<Segment> segments = ReadSegments(file);
    const std::vector<Entry> entries = ReadEntries(file, segments);
    const std::vector<char> names = ReadNames(file, segments, entries);
    std::vector<std::string> needed;
    for (const Entry& entry : entries) {
        if (entry.d_tag == DT_NEEDED && entry.d_un.d_val < names.size()) {
            needed.emplace_back(names.data() + entry.d_un.d_val);
        }
    }
    return needed;
}

} // namespace platform
