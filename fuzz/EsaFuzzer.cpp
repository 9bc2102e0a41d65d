#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "formats/ScenarioManifest.h"
#include "formats/ScenarioPackage.h"
#include "formats/zip/ZipArchive.h"
#include "formats/zip/ZipError.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"
#include "kit/ZipWriter.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"
#include "text/Text.h"

namespace {

constexpr std::size_t largestFile = std::size_t{1} << 30;

/// The content of a directory by name, with slashes; names of directories end in a slash.
using Content = std::map<std::string, std::string>;

void AddContent(const std::wstring& directory, const std::string& prefix, Content& content) {
    std::vector<platform::DirectoryEntry> entries;
    fuzz::Require(static_cast<bool>(platform::ListDirectory(directory, entries)), "a folder can be listed");
    for (const platform::DirectoryEntry& entry : entries) {
        const std::wstring path = directory + L"\\" + entry.name;
        std::string name = prefix + text::ToUtf8(entry.name);
        fuzz::Require(!entry.isLink, "no link is unpacked");
        if (entry.isDirectory) {
            name += '/';
            AddContent(path, name, content);
        }
        fuzz::Require(entry.isDirectory || platform::ReadFile(path, largestFile, content[name]), "a file can be read");
    }
}

/// A directory whose only entry is the target directory of unpacking.
class Box {
public:
    Box() { fuzz::Require(static_cast<bool>(platform::CreateNewDirectory(path)), "a folder can be made"); }
    ~Box() { fuzz::Require(static_cast<bool>(platform::RemoveTree(path)), "what was unpacked can be removed"); }
    Box(const Box&) = delete;
    Box& operator=(const Box&) = delete;

    std::wstring Inside() const { return path + L"\\inside"; }
    /// The unpacked files. Checks that no others were written beside them.
    Content Files() const {
        Content content;
        Content files;
        AddContent(path, "", content);
        for (const auto& [name, bytes] : content) {
            fuzz::Require(name.starts_with("inside/"), "everything is unpacked below the folder");
            files[name.substr(7)] = bytes;
        }
        return files;
    }

private:
    std::wstring path = fuzz::Scratch() / L"box";
};

/// Each file of the archive exists with its size and the same content as when read alone.
void CheckUnpacked(const std::wstring& package, const Content& files) {
    const zip::Archive archive(package);
    std::size_t count = 0;
    for (const zip::Entry& entry : archive.Entries()) {
        if (entry.IsDirectory()) {
            continue;
        }
        std::string bytes;
        ++count;
        archive.Read(entry, [&](std::string_view piece) { bytes += piece; });
        fuzz::Require(files.contains(entry.name) && files.at(entry.name) == bytes, "a file is unpacked as it is read");
    }
    fuzz::Require(count == files.size(), "nothing is unpacked that has no entry");
}

/// Unpacks the package completely, or leaves nothing.
bool Unpack(const std::wstring& package, Content& files) {
    const Box box;
    std::wstring problem;
    const bool isUnpacked = scenario_package::Unpack(package, box.Inside(), problem);
    fuzz::Require(isUnpacked == problem.empty(), "a refusal, and nothing else, says why");
    fuzz::Require(isUnpacked || !platform::Exists(box.Inside()), "of a refused package nothing is left");
    files = box.Files();
    std::erase_if(files, [](const auto& file) { return file.first.ends_with('/'); });
    return isUnpacked;
}

/// Reads one entry alone: the correct content, or a failure.
void CheckEntry(const std::wstring& package) {
    constexpr std::size_t limit = 100;
    std::string bytes = "before";
    std::wstring problem;
    scenario_package::Package opened;
    const bool isRead = opened.Open(package, problem) && opened.ReadEntry("manifest.json", limit, bytes, problem);
    fuzz::Require(isRead == problem.empty(), "a refusal, and nothing else, says why");
    fuzz::Require(isRead ? bytes.size() <= limit : bytes == "before", "a refused entry leaves the output as it was");
}

void CheckManifest(const std::wstring& package) {
    using scenario_manifest::ScenarioManifest;
    ScenarioManifest before;
    before.displayName = before.entryPoint = before.interpreter = L"before";
    before.timeLimitSeconds = 7;
    before.successExitCodes = {7};
    ScenarioManifest manifest = before;
    std::wstring problem;
    const bool isRead = scenario_manifest::ReadFor(package, manifest, problem);
    fuzz::Require(isRead || manifest == before, "a refused package leaves the manifest as it was");
    fuzz::Require(isRead == problem.empty(), "a refusal, and nothing else, says why");
}

void CheckPackage(std::string_view bytes) {
    const std::wstring package = fuzz::ScratchFile(L"package.esa", bytes);
    Content files;
    if (Unpack(package, files)) {
        CheckUnpacked(package, files);
    }
    CheckEntry(package);
    CheckManifest(package);
}

std::string EntryName(fuzz::ByteSource& source) {
    constexpr const char* names[] = {"a",    "b/", "a/b",    "../a",  "/a",     "A",    "c:a",           "nul",
                                     "a\\b", ".",  "a//b",   "b/c/d", "com1.x", "a.",   "manifest.json", "\xc3\xa4",
                                     "\xff", "a ", "b/../c", "aux/a", "a:b",    "a\nb", "...",           "~"};
    const std::size_t choice = source.Count(std::size(names));
    return choice == std::size(names) ? std::string(source.Bytes(source.Count(20))) : names[choice];
}

test_support::ZipEntry Entry(fuzz::ByteSource& source) {
    test_support::ZipEntry entry;
    entry.name = EntryName(source);
    entry.content = source.Bytes(source.Count(40));
    entry.deflated = source.Flag();
    entry.dataDescriptor = source.Flag();
    return entry;
}

/// Corrupts an entry.
void Spoil(test_support::ZipEntry& entry, fuzz::ByteSource& source) {
    const auto number = static_cast<std::uint32_t>(source.Number());
    const auto half = static_cast<std::uint16_t>(number);
    switch (source.Count(9)) {
    case 0:
        entry.localOffset = number;
        break;
    case 1:
        entry.size = number;
        break;
    case 2:
        entry.compressedSize = number;
        break;
    case 3:
        entry.rawData = std::string(source.Bytes(source.Count(60)));
        break;
    case 4:
        entry.externalAttributes = number;
        break;
    case 5:
        entry.flags = half;
        break;
    case 6:
        entry.method = half;
        break;
    case 7:
        entry.localName = EntryName(source);
        break;
    case 8:
        entry.localSize = number;
        break;
    default:
        entry.extraField = source.Bytes(source.Count(20));
        break;
    }
}

std::vector<test_support::ZipEntry> Entries(fuzz::ByteSource& source) {
    std::vector<test_support::ZipEntry> entries(source.Count(4));
    std::generate(entries.begin(), entries.end(), [&] { return Entry(source); });
    return entries;
}

/// Valid entries are unpacked as packed, or refused for their names.
void CheckPacked(const std::vector<test_support::ZipEntry>& entries) {
    Content files;
    if (Unpack(fuzz::ScratchFile(L"packed.esa", test_support::MakeZip(entries)), files)) {
        for (const auto& entry : entries) {
            fuzz::Require(entry.name.ends_with('/') || files.at(entry.name) == entry.content,
                          "a file is unpacked as it was packed");
        }
    }
}

} // namespace

/// Unpacks the input as a package, then packages made from it, valid and corrupted. No file is written outside the
/// target directory, and a refused package leaves nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    CheckPackage(bytes);
    fuzz::ByteSource source(bytes);
    std::vector<test_support::ZipEntry> entries = Entries(source);
    CheckPacked(entries);
    if (!entries.empty()) {
        Spoil(entries[source.Count(entries.size() - 1)], source);
        CheckPackage(test_support::MakeZip(entries));
    }
    return 0;
}
