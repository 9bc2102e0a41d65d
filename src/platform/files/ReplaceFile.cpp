#include "platform/files/ReplaceFile.h"

#include <cstdint>
#include <limits>
#include <random>

#include "fault_points/FaultPoint.h"
#include "platform/files/Directory.h"
#include "platform/files/File.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Hexadecimal.h"
#include "text/Text.h"

namespace platform {
namespace {

constexpr const wchar_t* temporaryMark = L".tmp-";
constexpr std::size_t digitCount = 16;

std::wstring RandomDigits() {
    std::random_device random(randomSource);
    std::wstring text;
    while (text.size() < digitCount) {
        const std::uint32_t bits = random();
        for (unsigned shift = 0; shift < 16; shift += 4) {
            text += text::hexadecimalDigits[(bits >> shift) & 0xF];
        }
    }
    return text;
}

/// Prefix of the temporary file names for `target`, which distinguishes them from those of other files. If the name is
/// too long for a suffix, a prefix common to all targets is used; such files are never cleaned up automatically.
std::wstring TemporaryStart(const std::wstring& target) {
    constexpr std::size_t longestName = 200;
    const std::wstring name = FileName(target);
    return (text::ToUtf8(name).size() <= longestName ? name : L"") + temporaryMark;
}

bool IsTemporaryOf(const std::wstring& name, const std::wstring& start) {
    return name.size() == start.size() + digitCount && name.starts_with(start) &&
           name.find_first_not_of(text::hexadecimalDigits, start.size()) == std::wstring::npos;
}

/// The name of a temporary file in the directory of `target`. Removes the file on destruction.
class TemporaryName {
public:
    explicit TemporaryName(const std::wstring& target)
        : path(target.substr(0, target.size() - FileName(target).size()) + TemporaryStart(target) + RandomDigits()) {}
    ~TemporaryName() {
        if (!isGone) {
            (void)RemoveFile(path);
        }
    }
    TemporaryName(const TemporaryName&) = delete;
    TemporaryName& operator=(const TemporaryName&) = delete;

    const std::wstring& Path() const { return path; }
    /// Called when the file has been renamed.
    void Forget() { isGone = true; }

private:
    std::wstring path;
    bool isGone = false;
};

Error CreateWithParents(File& file, const std::wstring& path, const std::wstring& model) {
    const Error result = file.CreateNew(path, model);
    if (result.kind != ErrorKind::NotFound) {
        return result;
    }
    const Error made = MakeMissingPrivateDirectories(ParentDirectory(path));
    return made ? file.CreateNew(path, model) : made;
}

/// Writes a new file with the permissions of `model`.
Error WriteNewFile(const std::wstring& path, const std::wstring& model, std::string_view bytes, Durability durability) {
    fault_points::ReachFaultPoint(fault_points::FaultPoint::FileToBeCreated);
    File file;
    if (const Error result = CreateWithParents(file, path, model); !result) {
        return result;
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::FileCreated);
    Error result = file.Write(bytes);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::FileWritten);
    if (result && durability == Durability::Synced) {
        result = file.Flush();
        fault_points::ReachFaultPoint(fault_points::FaultPoint::FileFlushed);
    }
    return result;
}

Error CopyToNewFile(const std::wstring& from, const std::wstring& to) {
    std::string bytes;
    const Error result = ReadFile(from, std::numeric_limits<std::size_t>::max() / 4, bytes);
    return result ? WriteNewFile(to, from, bytes, Durability::Synced) : result;
}

/// Makes `backupPath` a hard link to the file at `path`, or a copy if the volume has no hard links.
Error KeepAs(const std::wstring& path, const std::wstring& backupPath) {
    // The name stays if both are links to one file: renaming then does nothing.
    const TemporaryName temporary(backupPath);
    Error result = LinkFile(path, temporary.Path());
    if (!result && result.kind != ErrorKind::NotFound) {
        result = CopyToNewFile(path, temporary.Path());
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::BackupLinked);
    if (result) {
        result = RenameFile(temporary.Path(), backupPath);
        fault_points::ReachFaultPoint(fault_points::FaultPoint::BackupInPlace);
    }
    return result;
}

/// Flushes the directory if the name is new in it; otherwise the whole file could be missing after a power failure. An
/// existing name refers to a complete file, the old or the new one, in any case.
Error MoveIntoPlace(TemporaryName& temporary, const std::wstring& path, Durability durability) {
    const bool mustFlush = durability == Durability::Synced && !Exists(path);
    if (const Error result = RenameFile(temporary.Path(), path); !result) {
        return result;
    }
    temporary.Forget();
    fault_points::ReachFaultPoint(fault_points::FaultPoint::FileRenamed);
    return mustFlush ? FlushDirectory(ParentDirectory(path)) : Error{};
}

Error RequireFileName(const std::wstring& path) {
    const bool usable = !FileName(path).empty() && path.find(L'\0') == std::wstring::npos;
    return usable ? Error{} : Error{ErrorKind::NotFound, 0};
}

} // namespace

void RemoveStaleTemporaries(const std::wstring& path) {
    const std::wstring start = TemporaryStart(path);
    std::vector<DirectoryEntry> entries;
    // Errors are ignored: the next start tries again.
    (void)ListDirectory(ParentDirectory(path), entries);
    for (const DirectoryEntry& entry : entries) {
        if (start != temporaryMark && IsTemporaryOf(entry.name, start)) {
            (void)RemoveFile(ResolveAgainst(ParentDirectory(path), entry.name));
        }
    }
}

Error ReplaceFile(const std::wstring& path, std::string_view bytes, Durability durability) {
    if (const Error result = RequireFileName(path); !result) {
        return result;
    }
    TemporaryName temporary(path);
    const Error result = WriteNewFile(temporary.Path(), path, bytes, durability);
    return result ? MoveIntoPlace(temporary, path, durability) : result;
}

Error ReplaceFileKeepingBackup(const std::wstring& path, std::string_view bytes, const std::wstring& backupPath) {
    if (const Error result = RequireFileName(path); !result) {
        return result;
    }
    TemporaryName temporary(path);
    if (const Error result = WriteNewFile(temporary.Path(), path, bytes, Durability::Synced); !result) {
        return result;
    }
    const Error result = KeepAs(path, backupPath);
    const bool kept = result || result.kind == ErrorKind::NotFound;
    return kept ? MoveIntoPlace(temporary, path, Durability::Synced) : result;
}

} // namespace platform
