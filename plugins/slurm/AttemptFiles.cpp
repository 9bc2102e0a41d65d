#include "slurm/AttemptFiles.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "slurm/JobName.h"
#include "text/Text.h"

namespace slurm {
namespace {

constexpr auto leaseFile = L"slurm_lease";
constexpr auto beatBeginning = L"slurm_beat-";
constexpr auto endBeginning = L"slurm_end-";
constexpr std::string_view wholeEnd = " whole\n";
constexpr std::string_view givenUpEnd = " given up\n";

std::string ReadSmallFile(const std::wstring& path) {
    constexpr std::size_t largest = 4096;
    std::string bytes;
    // A file that cannot be read is not there yet.
    (void)platform::ReadFile(path, largest, bytes);
    return bytes;
}

} // namespace

AttemptFiles::AttemptFiles(std::wstring jobWorkDir, std::wstring attemptName)
    : workDir(std::move(jobWorkDir)), name(std::move(attemptName)) {}

bool AttemptFiles::WriteLease(std::uint64_t count) const {
    return Write(leaseFile, text::ToUtf8(name) + ' ' + std::to_string(count) + '\n', false);
}

bool AttemptFiles::WriteBeat(std::uint64_t count) const {
    return Write(beatBeginning + name, std::to_string(count) + '\n', false);
}

bool AttemptFiles::WriteEnd(const NodeEnd& end) const {
    return Write(endBeginning + name, std::to_string(end.runnerExit) + std::string(end.isWhole ? wholeEnd : givenUpEnd),
                 true);
}

std::optional<Lease> AttemptFiles::ReadLease() const {
    std::string content = ReadSmallFile(PathOf(leaseFile));
    std::wstring owner = text::FromUtf8(content.substr(0, content.find(' ')));
    return IsJobName(owner) ? std::optional(Lease{std::move(owner), std::move(content)}) : std::nullopt;
}

std::string AttemptFiles::ReadBeat() const {
    return ReadSmallFile(PathOf(beatBeginning + name));
}

std::optional<NodeEnd> AttemptFiles::ReadEnd() const {
    const std::string content = ReadSmallFile(PathOf(endBeginning + name));
    NodeEnd end;
    const auto number = std::from_chars(content.data(), content.data() + content.size(), end.runnerExit);
    const std::string_view rest(number.ptr, static_cast<std::size_t>(content.data() + content.size() - number.ptr));
    end.isWhole = rest == wholeEnd;
    return number.ec == std::errc() && (end.isWhole || rest == givenUpEnd) ? std::optional(end) : std::nullopt;
}

std::vector<std::wstring> AttemptFiles::OthersWithoutEnd() const {
    std::vector<std::wstring> begun = OthersWith(beatBeginning);
    std::erase_if(begun, [&](const std::wstring& other) { return AttemptFiles(workDir, other).ReadEnd().has_value(); });
    return begun;
}

void AttemptFiles::RemoveOthers() const {
    for (const wchar_t* const beginning : {beatBeginning, endBeginning}) {
        for (const std::wstring& other : OthersWith(beginning)) {
            // What cannot be removed has no effect, because names are not used again.
            (void)platform::RemoveFile(PathOf(beginning + other));
        }
    }
}

std::vector<std::wstring> AttemptFiles::OthersWith(const std::wstring& beginning) const {
    std::vector<platform::DirectoryEntry> entries;
    (void)platform::ListDirectory(workDir, entries);
    std::vector<std::wstring> names;
    for (const platform::DirectoryEntry& entry : entries) {
        if (entry.name.starts_with(beginning)) {
            names.push_back(entry.name.substr(beginning.size()));
        }
    }
    std::erase_if(names, [&](const std::wstring& other) { return other == name || !IsJobName(other); });
    return names;
}

std::wstring AttemptFiles::PathOf(const std::wstring& file) const {
    return platform::ResolveAgainst(workDir, file);
}

bool AttemptFiles::Write(const std::wstring& file, const std::string& text, bool flush) const {
    // A removed work directory is not created again.
    return platform::IsDirectory(workDir) &&
           platform::ReplaceFile(PathOf(file), text,
                                 flush ? platform::Durability::Synced : platform::Durability::Unsynced);
}

} // namespace slurm
