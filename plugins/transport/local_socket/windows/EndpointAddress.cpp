#include "transport/local_socket/windows/EndpointAddress.h"

#include <utility>

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include "platform/system/Error.h"
#include "platform/system/windows/Handle.h"
#include "platform/system/windows/UserSid.h"
#include "transport/local_socket/Limits.h"

namespace local_socket {
namespace {

using platform::LocalMemory;

std::wstring Failure(const std::wstring& what, const std::wstring& path, const std::wstring& why) {
    return what + L" " + path + L": " + why;
}

std::wstring SystemFailure(const std::wstring& what, const std::wstring& path) {
    return Failure(what, path, platform::LastError().Text());
}

LocalMemory<void> DescriptorFromText(const std::wstring& text) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1, &descriptor, nullptr);
    return LocalMemory<void>(descriptor);
}

platform::OwnedHandle HandleUnlessInvalid(HANDLE handle) {
    return handle == INVALID_HANDLE_VALUE ? platform::OwnedHandle() : platform::OwnedHandle(handle);
}

platform::OwnedHandle CreatePipeEnd(const std::wstring& path, Instance instance, void* descriptor) {
    SECURITY_ATTRIBUTES security{sizeof(SECURITY_ATTRIBUTES), descriptor, FALSE};
    const DWORD first = instance == Instance::First ? DWORD{FILE_FLAG_FIRST_PIPE_INSTANCE} : DWORD{0};
    const DWORD mode = PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS;
    const DWORD buffer = chunkBytes;
    return HandleUnlessInvalid(CreateNamedPipeW(path.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | first, mode,
                                                PIPE_UNLIMITED_INSTANCES, buffer, buffer, 0, &security));
}

platform::OwnedHandle OpenPipeEnd(const std::wstring& path) {
    return HandleUnlessInvalid(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                           FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION,
                                           nullptr));
}

/// Opens the pipe. Waits until `end` while all its instances are in use.
platform::OwnedHandle OpenFreePipeEnd(const std::wstring& path, ULONGLONG end) {
    for (;;) {
        platform::OwnedHandle pipe = OpenPipeEnd(path);
        const ULONGLONG now = GetTickCount64();
        if (pipe || GetLastError() != ERROR_PIPE_BUSY || now >= end) {
            return pipe;
        }
        // The result is ignored: it fails in many ways if the server exits in between, and the next open reports the
        // actual state.
        WaitNamedPipeW(path.c_str(), static_cast<DWORD>(end - now));
    }
}

OpenedPipe OpenFailure(const std::wstring& path) {
    const DWORD code = GetLastError();
    if (code == ERROR_FILE_NOT_FOUND) {
        return {};
    }
    if (code == ERROR_PIPE_BUSY) {
        return {
            {}, Failure(L"the pipe", path, L"the engine there is busy and takes no front ends; try again later"), true};
    }
    return {{}, SystemFailure(L"the pipe", path)};
}

/// Detects another server where FILE_FLAG_FIRST_PIPE_INSTANCE is ignored.
bool IsTaken(const std::wstring& path) {
    return WaitNamedPipeW(path.c_str(), 1) != 0 || GetLastError() != ERROR_FILE_NOT_FOUND;
}

constexpr wchar_t unknownUser[] = L"the system does not tell who the user is";
constexpr wchar_t taken[] = L"another engine listens there";

} // namespace

std::wstring OwnUserSid() {
    return platform::UserSidOf(GetCurrentProcess());
}

std::wstring PipePath(const std::wstring& userSid, const std::string& name) {
    return L"\\\\.\\pipe\\common_controller-" + userSid + L"-" + std::wstring(name.begin(), name.end());
}

std::wstring PipeDescriptorText(const std::wstring& userSid) {
    return L"O:" + userSid + L"D:P(A;;GA;;;" + userSid + L")";
}

OpenedPipe MakePipe(const std::string& name, Instance instance) {
    const std::wstring sid = OwnUserSid();
    const std::wstring path = PipePath(sid, name);
    if (sid.empty()) {
        return {{}, Failure(L"cannot make the pipe", path, unknownUser)};
    }
    const LocalMemory<void> descriptor = DescriptorFromText(PipeDescriptorText(sid));
    if (!descriptor) {
        return {{}, SystemFailure(L"cannot make the security descriptor of the pipe", path)};
    }
    if (instance == Instance::First && IsTaken(path)) {
        return {{}, Failure(L"cannot make the pipe", path, taken)};
    }
    platform::OwnedHandle pipe = CreatePipeEnd(path, instance, descriptor.get());
    std::wstring failure = pipe ? std::wstring() : SystemFailure(L"cannot make the pipe", path);
    return {std::move(pipe), std::move(failure)};
}

OpenedPipe OpenPipe(const std::string& name, std::chrono::milliseconds timeout) {
    const std::wstring sid = OwnUserSid();
    const std::wstring path = PipePath(sid, name);
    if (sid.empty()) {
        return {{}, Failure(L"cannot open the pipe", path, unknownUser)};
    }
    platform::OwnedHandle pipe = OpenFreePipeEnd(path, GetTickCount64() + static_cast<ULONGLONG>(timeout.count()));
    if (!pipe) {
        return OpenFailure(path);
    }
    if (!IsOwnPipe(pipe.Get(), sid)) {
        return {{}, Failure(L"will not talk to the engine at", path, L"it belongs to another user")};
    }
    return {std::move(pipe), {}};
}

bool IsOwnPipe(void* pipe, const std::wstring& userSid) {
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetSecurityInfo(pipe, SE_KERNEL_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr, nullptr, nullptr,
                        &descriptor) != ERROR_SUCCESS) {
        return false;
    }
    const LocalMemory<void> owned(descriptor);
    return platform::SidText(owner) == userSid;
}

} // namespace local_socket
