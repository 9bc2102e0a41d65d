#include "formats/zip/ZipRecords.h"

#include <utility>

#include "formats/zip/ByteReader.h"
#include "formats/zip/ZipError.h"
#include "formats/zip/ZipName.h"
#include "text/Text.h"

namespace zip {
namespace {

constexpr std::string_view endSignature = "PK\5\6";
constexpr std::string_view centralSignature = "PK\1\2";
constexpr std::string_view localSignature = "PK\3\4";
constexpr std::string_view descriptorSignature = "PK\7\10";
constexpr std::string_view zip64LocatorSignature = "PK\6\7";
constexpr std::size_t zip64LocatorSize = 20;
constexpr std::uint32_t zip64Value = 0xffffffff;

constexpr std::uint16_t encryptionFlags = 0x2041; // plain, strong, masked directory
constexpr std::uint16_t knownFlags = 0x080e;      // deflate's level, data descriptor, UTF-8

constexpr std::uint16_t methodStored = 0;
constexpr std::uint16_t methodDeflated = 8;
constexpr std::uint16_t zip64ExtraField = 1;

/// Finds the last end record whose comment extends exactly to the end of the file.
std::size_t FindEndRecord(std::string_view lastBytes) {
    for (std::size_t left = lastBytes.size(); left >= endRecordSize; --left) {
        const std::size_t place = left - endRecordSize;
        if (!lastBytes.substr(place).starts_with(endSignature)) {
            continue;
        }
        ByteReader commentLength(lastBytes.substr(left - 2));
        if (left + commentLength.Take16() == lastBytes.size()) {
            return place;
        }
    }
    throw Problem{L"is not a ZIP file, or is cut off (it has no end record)"};
}

void RefuseZip64Locator(std::string_view lastBytes, std::size_t endRecord) {
    if (endRecord >= zip64LocatorSize &&
        lastBytes.substr(endRecord - zip64LocatorSize).starts_with(zip64LocatorSignature)) {
        throw Problem{L"is a ZIP64 archive, which is not supported"};
    }
}

void CheckDisks(ByteReader& reader) {
    const bool isFirst = reader.Take16() == 0;
    const bool holdsDirectory = reader.Take16() == 0;
    if (!isFirst || !holdsDirectory) {
        throw Problem{L"is one part of an archive of several"};
    }
}

void CheckFlags(std::uint16_t flags) {
    if ((flags & encryptionFlags) != 0) {
        throw Problem{L"is encrypted"};
    }
    if ((flags & ~knownFlags) != 0) {
        throw Problem{L"uses a feature of the ZIP format that is not supported"};
    }
}

/// One record of the central directory, as stored.
struct CentralRecord {
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    EntrySizes facts;
    std::uint16_t disk = 0;
    std::uint32_t externalAttributes = 0;
    std::uint32_t localOffset = 0;
    std::string_view name;
    std::string_view extraField;
};

EntrySizes TakeFacts(ByteReader& reader) {
    EntrySizes facts;
    facts.crc = reader.Take32();
    facts.compressedSize = reader.Take32();
    facts.size = reader.Take32();
    return facts;
}

CentralRecord TakeCentralRecord(ByteReader& reader) {
    CentralRecord record;
    if (reader.TakeText(centralSignature.size()) != centralSignature) {
        throw Problem{L"has a damaged directory"};
    }
    reader.Take32(); // versions
    record.flags = reader.Take16();
    record.method = reader.Take16();
    reader.Take32(); // time
    record.facts = TakeFacts(reader);
    const std::uint16_t nameLength = reader.Take16();
    const std::uint16_t extraLength = reader.Take16();
    const std::uint16_t commentLength = reader.Take16();
    record.disk = reader.Take16();
    reader.Take16(); // internal attributes
    record.externalAttributes = reader.Take32();
    record.localOffset = reader.Take32();
    record.name = reader.TakeText(nameLength);
    record.extraField = reader.TakeText(extraLength);
    reader.TakeText(commentLength);
    return record;
}

void CheckMethod(std::uint16_t method) {
    if (method != methodStored && method != methodDeflated) {
        throw Problem{L"is compressed with method " + std::to_wstring(method) +
                      L"; only stored and deflated entries are supported"};
    }
}

void CheckKind(const CentralRecord& record) {
    constexpr std::uint32_t kindMask = 0170000;
    constexpr std::uint32_t directory = 0040000;
    constexpr std::uint32_t file = 0100000;
    constexpr std::uint32_t link = 0120000;
    constexpr std::uint32_t windowsReparsePoint = 0x400;
    const std::uint32_t kind = (record.externalAttributes >> 16) & kindMask;
    if (kind == link || (record.externalAttributes & windowsReparsePoint) != 0) {
        throw Problem{L"is a link"};
    }
    if (kind != 0 && kind != directory && kind != file) {
        throw Problem{L"is neither a file nor a folder"};
    }
    if (kind != 0 && (kind == directory) != record.name.ends_with('/')) {
        throw Problem{L"is said to be both a file and a folder"};
    }
}

void RefuseZip64(const CentralRecord& record) {
    bool isZip64 = record.facts.size == zip64Value || record.facts.compressedSize == zip64Value ||
                   record.localOffset == zip64Value;
    ByteReader reader(record.extraField);
    while (!reader.IsAtEnd()) {
        isZip64 |= reader.Take16() == zip64ExtraField;
        reader.TakeText(reader.Take16());
    }
    if (isZip64) {
        throw Problem{L"has ZIP64 sizes, which are not supported"};
    }
}

void CheckSizes(const CentralRecord& record) {
    if (record.method == methodStored && record.facts.size != record.facts.compressedSize) {
        throw Problem{L"is stored with two different sizes"};
    }
    if (record.name.ends_with('/') && record.facts.size != 0) {
        throw Problem{L"is a folder with content"};
    }
}

Entry CheckedEntry(const CentralRecord& record) {
    std::wstring path = CheckedName(record.name);
    CheckFlags(record.flags);
    CheckMethod(record.method);
    if (record.disk != 0) {
        throw Problem{L"stands in another part of the archive"};
    }
    CheckKind(record);
    RefuseZip64(record);
    CheckSizes(record);
    return {std::string(record.name),
            std::move(path),
            record.flags,
            record.method == methodDeflated,
            record.facts,
            record.localOffset,
            0};
}

/// True if a local header agrees with the directory. With a data descriptor, any local value may be 0 instead.
bool Agrees(std::uint32_t local, std::uint32_t listed, const Entry& entry) {
    return local == listed || (local == 0 && entry.HasDataDescriptor());
}

bool Agree(const EntrySizes& local, const Entry& entry) {
    return Agrees(local.crc, entry.facts.crc, entry) &&
           Agrees(local.compressedSize, entry.facts.compressedSize, entry) &&
           Agrees(local.size, entry.facts.size, entry);
}

} // namespace

std::wstring EntryLabel(std::string_view name) {
    return L"the entry \"" + text::FromUtf8(name) + L"\" ";
}

Problem EntryProblem(std::string_view name, const std::wstring& text) {
    return {EntryLabel(name) + text, true};
}

EndRecord ReadEndRecord(std::string_view lastBytes, std::uint64_t offset) {
    const std::size_t place = FindEndRecord(lastBytes);
    RefuseZip64Locator(lastBytes, place);
    ByteReader reader(lastBytes.substr(place + endSignature.size()));
    CheckDisks(reader);
    const std::uint16_t entriesOfThisDisk = reader.Take16();
    const EndRecord record = {reader.Take16(), reader.Take32(), reader.Take32()};
    if (entriesOfThisDisk != record.entryCount) {
        throw Problem{L"is one part of an archive of several"};
    }
    if (record.directoryOffset + record.directorySize != offset + place) {
        throw Problem{L"has a directory that is not where its end record says"};
    }
    return record;
}

std::vector<Entry> ReadCentralDirectory(std::string_view bytes, std::uint32_t count) {
    std::vector<Entry> entries;
    ByteReader reader(bytes);
    while (!reader.IsAtEnd() && entries.size() < count) {
        const CentralRecord record = TakeCentralRecord(reader);
        try {
            entries.push_back(CheckedEntry(record));
        } catch (const Problem& problem) {
            throw EntryProblem(record.name, problem.text);
        }
    }
    if (!reader.IsAtEnd() || entries.size() != count) {
        throw Problem{L"has not as many entries as its end record says"};
    }
    return entries;
}

std::uint16_t CheckLocalHeader(std::string_view bytes, const Entry& entry) {
    ByteReader reader(bytes);
    if (reader.TakeText(localSignature.size()) != localSignature) {
        throw Problem{L"has no local header"};
    }
    reader.Take16(); // version
    const std::uint16_t flags = reader.Take16();
    const std::uint16_t method = reader.Take16();
    reader.Take32(); // time
    const EntrySizes facts = TakeFacts(reader);
    const std::uint16_t nameLength = reader.Take16();
    const std::uint16_t extraLength = reader.Take16();
    if (flags != entry.flags || method != (entry.isDeflated ? methodDeflated : methodStored)) {
        throw Problem{L"has a local header of another kind than the directory says"};
    }
    if (!Agree(facts, entry)) {
        throw Problem{L"has a local header with other sizes or another checksum than the directory says"};
    }
    if (nameLength != entry.name.size() || reader.TakeText(nameLength) != entry.name) {
        throw Problem{L"has a local header with another name than the directory says"};
    }
    return extraLength;
}

std::size_t CheckDataDescriptor(std::string_view bytes, const Entry& entry) {
    const bool isSigned = bytes.starts_with(descriptorSignature);
    ByteReader reader(isSigned ? bytes.substr(descriptorSignature.size()) : bytes);
    if (TakeFacts(reader) != entry.facts) {
        throw Problem{L"has a data descriptor with other sizes or another checksum than the directory says"};
    }
    return dataDescriptorSize + (isSigned ? descriptorSignature.size() : 0);
}

} // namespace zip
