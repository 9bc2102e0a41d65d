#include "controller_web/ServerPlace.h"

#include <algorithm>
#include <vector>

#include "CommonControllerLib/ControllerLogManager.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "text/Text.h"

namespace web {
namespace {

/// For systems that cannot watch a directory.
constexpr std::chrono::milliseconds pollInterval{1000};

std::wstring LockedNameFor(const std::wstring& jobListFile) {
    return server_place::DirectoryFor(jobListFile) + L"\\server";
}

std::wstring StopFileFor(const std::wstring& jobListFile) {
    return server_place::DirectoryFor(jobListFile) + L"\\stop";
}

platform::Error MakeDirectories(const std::wstring& jobListFile) {
    const platform::Error result = platform::EnsurePrivateDirectories(platform::ParentDirectory(jobListFile));
    return result ? platform::EnsurePrivateDirectory(server_place::DirectoryFor(jobListFile)) : result;
}

} // namespace

namespace server_place {

std::wstring DirectoryFor(const std::wstring& jobListFile) {
    return jobListFile + L".web";
}

std::wstring LinkDirectoryFor(const std::wstring& jobListFile) {
    return DirectoryFor(jobListFile) + L"\\links";
}

std::wstring UploadDirectoryFor(const std::wstring& jobListFile) {
    return DirectoryFor(jobListFile) + L"\\arriving";
}

std::optional<host_lock::Holder> FindServer(const std::wstring& jobListFile) {
    host_lock::Holder holder;
    return host_lock::FindHolder(LockedNameFor(jobListFile), holder) ? std::optional(holder) : std::nullopt;
}

bool EndServer(const std::wstring& jobListFile, const host_lock::Holder& server, std::chrono::milliseconds timeout) {
    const platform::OwnedHandle process = host_lock::OpenHolder(server);
    if (!process) {
        return true;
    }
    return platform::CreateEmptyFile(StopFileFor(jobListFile)) &&
           platform::WaitForAny({process.Get()}, timeout).has_value();
}

} // namespace server_place

ServerPlace::~ServerPlace() {
    lock.Remove();
}

platform::Error ServerPlace::Take(const std::wstring& jobListFile) {
    if (const platform::Error result = MakeDirectories(jobListFile); !result) {
        return result;
    }
    if (const platform::Error result = lock.Take(host_lock::FileFor(LockedNameFor(jobListFile))); !result) {
        return result;
    }
    stopFile = StopFileFor(jobListFile);
    // A request to an earlier server, and what it was receiving when it was killed. Both are normally missing.
    (void)platform::RemoveFile(stopFile);
    (void)platform::RemoveTree(server_place::UploadDirectoryFor(jobListFile));
    watch = std::make_unique<platform::DirectoryWatch>(server_place::DirectoryFor(jobListFile));
    holder = host_lock::OwnHolder();
    holder.jobListFile = jobListFile;
    return {};
}

void ServerPlace::SetReady(const std::string& address) {
    holder.isReady = true;
    holder.place = text::FromUtf8(address);
    Write();
}

void ServerPlace::Write() {
    if (const platform::Error result = lock.Write(host_lock::Serialize(holder)); !result) {
        ControllerLogManager::WarnLog(L"The address of the web page cannot be written for other programs: " +
                                      result.Text());
    }
}

void ServerPlace::AwaitEnd(void* stop) {
    const std::optional<std::chrono::milliseconds> limit =
        watch->Handle() == nullptr ? std::optional(pollInterval) : std::nullopt;
    std::vector<void*> handles = {stop};
    if (watch->Handle() != nullptr) {
        handles.push_back(watch->Handle());
    }
    while (!IsAskedToEnd()) {
        if (platform::WaitForAny(handles, limit) == std::size_t{0}) {
            break;
        }
        watch->Rearm();
    }
    holder.isReady = false;
    Write();
    (void)platform::RemoveFile(stopFile);
}

bool ServerPlace::IsAskedToEnd() const {
    return platform::Exists(stopFile);
}

} // namespace web
