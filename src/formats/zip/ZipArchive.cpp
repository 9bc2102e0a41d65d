#include "formats/zip/ZipArchive.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "formats/zip/ZipError.h"
#include "formats/zip/ZipName.h"

namespace zip {
namespace {

constexpr std::uint64_t mebibyte = 1024 * 1024;
constexpr std::uint32_t mostEntries = 10000;
constexpr std::uint64_t mostContent = 1024 * mebibyte;
constexpr std::uint64_t largestDirectory = 16 * mebibyte;
constexpr std::uint64_t highestRatio = 1000;
constexpr std::uint64_t ratioCountsFrom = mebibyte;

void CheckContentSizes(const std::vector<Entry>& entries) {
    std::uint64_t total = 0;
    for (const Entry& entry : entries) {
        total += entry.facts.size;
    }
    if (total > mostContent) {
        throw Problem{L"holds more than 1 GiB when unpacked"};
    }
    for (const Entry& entry : entries) {
        if (entry.facts.size > ratioCountsFrom && entry.facts.size > highestRatio * entry.facts.compressedSize) {
            throw EntryProblem(entry.name, L"grows to more than 1000 times its packed size");
        }
    }
}

/// Runs a check of one entry and adds the entry's name to its problem.
template <typename Action>
auto ForEntry(const Entry& entry, const Action& action) {
    try {
        return action();
    } catch (const Problem& problem) {
        throw EntryProblem(entry.name, problem.text);
    }
}

void CheckNames(const std::vector<Entry>& entries) {
    NameSet names;
    for (const Entry& entry : entries) {
        ForEntry(entry, [&] { names.Add(entry.path); });
    }
}

} // namespace

Archive::Archive(const std::wstring& path) : file(path) {
    if (file.Size() > largestArchive) {
        throw Problem{L"is larger than 512 MiB"};
    }
    const EndRecord end = FindEnd();
    ReadDirectory(end);
    CheckNames(entries);
    CheckContentSizes(entries);
    LocateData(end.directoryOffset);
}

const Entry* Archive::Find(std::string_view name) const {
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.name == name; });
    return found == entries.end() || found->IsDirectory() ? nullptr : &*found;
}

void Archive::Read(const Entry& entry, const Sink& sink) const {
    ForEntry(entry, [&] { ReadData(file, entry, sink); });
}

std::string Archive::Bytes(std::uint64_t offset, std::uint64_t count) const {
    std::string bytes;
    file.Read(offset, count, bytes);
    return bytes;
}

EndRecord Archive::FindEnd() const {
    const std::uint64_t count = std::min<std::uint64_t>(file.Size(), endRecordSize + longestComment);
    const std::uint64_t offset = file.Size() - count;
    return ReadEndRecord(Bytes(offset, count), offset);
}

void Archive::ReadDirectory(const EndRecord& end) {
    if (end.entryCount > mostEntries) {
        throw Problem{L"has more than 10,000 entries"};
    }
    if (end.directorySize > largestDirectory) {
        throw Problem{L"has a directory of more than 16 MiB"};
    }
    entries = ReadCentralDirectory(Bytes(end.directoryOffset, end.directorySize), end.entryCount);
}

/// Checks the entries in file order, because each must begin after the end of those before it.
void Archive::LocateData(std::uint64_t directoryOffset) {
    std::vector<Entry*> inFileOrder;
    for (Entry& entry : entries) {
        inFileOrder.push_back(&entry);
    }
    std::sort(inFileOrder.begin(), inFileOrder.end(),
              [](const Entry* left, const Entry* right) { return left->localOffset < right->localOffset; });
    std::uint64_t freeFrom = 0;
    for (Entry* entry : inFileOrder) {
        freeFrom = ForEntry(*entry, [&] { return LocateEntry(*entry, freeFrom, directoryOffset); });
    }
}

/// Returns the end of the entry, including its data descriptor.
std::uint64_t Archive::LocateEntry(Entry& entry, std::uint64_t freeFrom, std::uint64_t directoryOffset) const {
    if (entry.localOffset < freeFrom) {
        throw Problem{L"overlaps another entry"};
    }
    const std::uint64_t headerSize = localHeaderSize + entry.name.size();
    const std::uint16_t extraLength = CheckLocalHeader(Bytes(entry.localOffset, headerSize), entry);
    entry.dataOffset = entry.localOffset + headerSize + extraLength;
    std::uint64_t end = entry.dataOffset + entry.facts.compressedSize;
    if (end <= directoryOffset && entry.HasDataDescriptor()) {
        end += CheckDataDescriptor(Bytes(end, dataDescriptorSize + 4), entry);
    }
    if (end > directoryOffset) {
        throw Problem{L"reaches into the directory of the archive"};
    }
    return end;
}

} // namespace zip
