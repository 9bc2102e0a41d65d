#include "front_end/commands/FileRoles.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "front_end/commands/CommandFailure.h"
#include "platform/files/File.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "services/Settings.h"

namespace front_end {
namespace {

bool IsSameDirectory(const std::wstring& left, const std::wstring& right) {
    const auto identity = platform::IdentityOf(left);
    return identity ? identity == platform::IdentityOf(right) : platform::SameName(left, right);
}

/// A device has no content to lose. An unreadable path counts as a file.
bool IsDevice(const std::wstring& path) {
    return platform::File().OpenForReading(path).kind == platform::ErrorKind::NotSupported;
}

/// A file that will be written, for comparison with others.
class WrittenFile {
public:
    explicit WrittenFile(const std::wstring& typed) : path(AbsolutePath(typed)), identity(platform::IdentityOf(path)) {
        canConflict = !typed.empty() && !(identity && IsDevice(path));
    }

    bool Is(const std::wstring& typed) const {
        if (!canConflict || typed.empty()) {
            return false;
        }
        const std::wstring other = AbsolutePath(typed);
        return identity ? identity == platform::IdentityOf(other) : IsMissingFile(other);
    }

private:
    /// True if both paths name the same file and it does not exist yet.
    bool IsMissingFile(const std::wstring& other) const {
        return platform::SameName(platform::FileName(path), platform::FileName(other)) && !platform::Exists(other) &&
               IsSameDirectory(platform::ParentDirectory(path), platform::ParentDirectory(other));
    }

    std::wstring path;
    std::optional<platform::FileIdentity> identity;
    bool canConflict = true;
};

[[noreturn]] void Fail(const CommandContext& context, const FileRole& written, const FileRole& other) {
    const Texts& texts = context.texts;
    throw CommandFailure{ExitCode::Usage,
                         texts.Format(L"Errors/SameFile", {platform::ToNativeText(written.path),
                                                           texts.Get(written.textKey), texts.Get(other.textKey)})};
}

} // namespace

std::wstring AbsolutePath(const std::wstring& path) {
    return platform::ResolveAgainst(platform::CurrentDirectory(), path);
}

std::wstring ScenarioName(const std::wstring& typed) {
    const std::wstring path = AbsolutePath(typed);
    return IsFile(path) ? path : typed;
}

bool IsFile(const std::wstring& path) {
    return platform::Exists(path) && !platform::IsDirectory(path);
}

void RequireDistinctFiles(const CommandContext& context, const std::vector<FileRole>& written,
                          const std::vector<FileRole>& read) {
    for (auto role = written.begin(); role != written.end(); ++role) {
        const WrittenFile file(role->path);
        const auto refuse = [&](const FileRole& other) {
            if (file.Is(other.path)) {
                Fail(context, *role, other);
            }
        };
        std::for_each(std::next(role), written.end(), refuse);
        std::for_each(read.begin(), read.end(), refuse);
    }
}

std::vector<FileRole> FilesOfSettings() {
    const auto current = settings::Current();
    return {{L"Roles/Settings", current->file},
            {L"Roles/JobList", current->jobListFile},
            {L"Roles/Strings", current->stringResourceFile}};
}

} // namespace front_end
