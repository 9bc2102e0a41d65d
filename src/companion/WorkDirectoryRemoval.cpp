#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include <algorithm>
#include <optional>

#include "formats/Boundary.h"
#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "services/Settings.h"

namespace {

using platform::FileIdentity;

bool IsRoot(const std::wstring& path) {
    return platform::ParentDirectory(path).empty() || platform::ParentDirectory(path) == path;
}

/// Both paths must be normalized.
bool LiesBelow(const std::wstring& path, const std::wstring& directory) {
    const std::wstring start = directory.ends_with(L'\\') ? directory : directory + L'\\';
    return path.size() > start.size() && platform::SameName(path.substr(0, start.size()), start);
}

/// Compares file identities, because a directory can have several names (letter case, short names, mount points).
bool IsOrHolds(const std::wstring& path, const std::wstring& directory) {
    const std::optional<FileIdentity> identity = platform::IdentityOf(path);
    if (!identity) {
        return false;
    }
    std::wstring ancestor = directory;
    while (identity != platform::IdentityOf(ancestor)) {
        if (IsRoot(ancestor)) {
            return false;
        }
        ancestor = platform::ParentDirectory(ancestor);
    }
    return true;
}

/// Returns a link among `path` and its parents below `directory`; empty if there is none.
std::wstring FindLink(std::wstring path, const std::wstring& directory) {
    std::wstring link;
    for (; LiesBelow(path, directory); path = platform::ParentDirectory(path)) {
        if (platform::IsLink(path)) {
            link = path;
        }
    }
    return link;
}

/// True for the directories that the engine creates for jobs: directly in the work directory and named by an id. The
/// user may keep other directories in the same work directory.
bool IsNamedAsAJob(const std::wstring& path, const std::wstring& workDirectory) {
    const std::wstring name = path.substr(std::min(path.size(), workDirectory.size()));
    return run_protocol::IsJobId(name.substr(std::min(name.find_first_not_of(L'\\'), name.size())));
}

/// Returns why the path `text` must not be removed; empty if it may be. `text` comes from the job list and is
/// untrusted.
std::wstring ReasonToRefuse(const std::wstring& text) {
    if (text.empty()) {
        return L"the path is empty";
    }
    if (!platform::IsAbsolute(text)) {
        return L"the path is not absolute";
    }
    const std::wstring path = platform::ResolveAgainst({}, text);
    if (IsRoot(path)) {
        return L"it is a root folder";
    }
    const std::wstring workDirectory = platform::ResolveAgainst({}, settings::Current()->workDirectory);
    if (platform::SameName(path, workDirectory) || LiesBelow(workDirectory, path) || IsOrHolds(path, workDirectory)) {
        return L"it is or holds the work directory of the settings";
    }
    if (!LiesBelow(path, workDirectory)) {
        return L"it does not lie below the work directory of the settings, " + platform::ToNativeText(workDirectory);
    }
    const std::wstring link = FindLink(path, workDirectory);
    if (!link.empty()) {
        return L"the path leads through the link " + platform::ToNativeText(link);
    }
    return IsNamedAsAJob(path, workDirectory) ? L"" : L"it is not named as the work directories of jobs are";
}

void Warn(const std::wstring& path, const std::wstring& reason) {
    ControllerCSWrapper::WriteWarnLog(L"The work directory \"" + platform::ToNativeText(path) +
                                      L"\" of a job is not removed: " + reason);
}

bool Remove(const std::wstring& text) {
    const std::wstring reason = ReasonToRefuse(text);
    if (!reason.empty()) {
        Warn(text, reason);
        return false;
    }
    const std::wstring path = platform::ResolveAgainst({}, text);
    const platform::Error result = platform::RemoveTree(path);
    const bool isGone = result || result.kind == platform::ErrorKind::NotFound;
    if (!isGone) {
        Warn(path, result.Text());
    }
    return isGone;
}

} // namespace

bool ControllerCSWrapper::RemoveJobWorkDirectory(const std::wstring& workDir) {
    return boundary::Guard("RemoveJobWorkDirectory", [&] { return Remove(workDir.substr(0, workDir.find(L'\0'))); });
}
