#pragma once

#include <chrono>
#include <string>

#include "platform/system/OwnedHandle.h"

/// The endpoint on Windows: a named pipe that only its user may open.
namespace local_socket {

/// The user's security identifier as text; empty if the system does not return it.
std::wstring OwnUserSid();

std::wstring PipePath(const std::wstring& userSid, const std::string& name);

/// The pipe's security descriptor as text: owned by the user, full access for the user, none for others.
std::wstring PipeDescriptorText(const std::wstring& userSid);

/// An open pipe handle for overlapped use, or the reason why there is none.
struct OpenedPipe {
    platform::OwnedHandle pipe;
    /// Empty if no server listens.
    std::wstring failure;
    /// True if all instances of the server's pipe are in use.
    bool isBusy = false;
};

/// Which instance of a pipe to create; creating the first one fails if the pipe exists.
enum class Instance : std::int32_t { First, Further };

/// Creates one pipe instance for a client to connect to.
OpenedPipe MakePipe(const std::string& name, Instance instance);

/// Opens the client side if the pipe belongs to this user. Waits while all instances are in use.
OpenedPipe OpenPipe(const std::string& name, std::chrono::milliseconds timeout);

/// True if this user owns the pipe: other users cannot create such a pipe.
bool IsOwnPipe(void* pipe, const std::wstring& userSid);

} // namespace local_socket
