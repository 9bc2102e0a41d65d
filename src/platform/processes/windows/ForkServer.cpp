#include "platform/processes/ForkServer.h"

namespace platform {

ForkServer::~ForkServer() = default;

Error ForkServer::Start(ProcessStart) {
    return {ErrorKind::NotSupported};
}

Error ForkServer::StartReaper() {
    return {ErrorKind::NotSupported};
}

bool ForkServer::IsRunning() const {
    return false;
}

OwnedHandle ForkServer::ForkCopy(const std::string&) {
    return OwnedHandle();
}

OwnedHandle ForkServer::Fork(const std::string&) {
    return OwnedHandle();
}

void ForkServer::End() {}

std::optional<std::string> ServeForks(const OwnedHandle&, void*, std::chrono::milliseconds,
                                      const std::function<bool(const std::string& request)>&) {
    return std::nullopt;
}

bool OverwriteStartVariable(const std::wstring&, const std::wstring&) {
    return false;
}

} // namespace platform
