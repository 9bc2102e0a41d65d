#pragma once

#include "formats/HostLock.h"
#include "platform/files/FileLock.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Error.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace web {

/// What a server of the web page and the programs that look for it share, in a directory beside the job list that only
/// the user can enter. Paths are library text.
namespace server_place {

std::wstring DirectoryFor(const std::wstring& jobListFile);

/// The directory of the one-time links.
std::wstring LinkDirectoryFor(const std::wstring& jobListFile);

/// The directory of uploads while they arrive.
std::wstring UploadDirectoryFor(const std::wstring& jobListFile);

/// The server that runs for this job list; its `place` is the address of the page. Nothing if none does. A server that
/// is starting is not ready yet, and its process id may be 0.
[[nodiscard]] std::optional<host_lock::Holder> FindServer(const std::wstring& jobListFile);

/// Asks the server to end and waits for its end. False if it does not end in time.
[[nodiscard]] bool EndServer(const std::wstring& jobListFile, const host_lock::Holder& server,
                             std::chrono::milliseconds timeout);

} // namespace server_place

/// The lock that makes this process the only server for its job list. It is removed with this object.
class ServerPlace {
public:
    ServerPlace() = default;
    ~ServerPlace();
    ServerPlace(const ServerPlace&) = delete;
    ServerPlace& operator=(const ServerPlace&) = delete;

    /// Takes the lock, removes what an earlier server had not received to its end, and begins to watch for requests to
    /// end. Fails with `InUse` if another server has it.
    [[nodiscard]] platform::Error Take(const std::wstring& jobListFile);

    /// Names the address of the page to other programs.
    void SetReady(const std::string& address);

    /// Waits until `stop` is signalled or another program has asked this one to end. Then the server is not ready any
    /// more for other programs.
    void AwaitEnd(void* stop);

private:
    bool IsAskedToEnd() const;
    void Write();

    platform::FileLock lock;
    host_lock::Holder holder;
    std::wstring stopFile;
    std::unique_ptr<platform::DirectoryWatch> watch;
};

} // namespace web
