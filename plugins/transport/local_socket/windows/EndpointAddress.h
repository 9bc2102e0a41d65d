#pragma once

#include <chrono>
#include <string>

#include "platform/processes/ProcessHandle.h"

/// Where engine and front ends of one user meet on Windows: a named pipe that only this user may open.
namespace local_socket {

/// The user's security identifier as text; empty when the system does not tell.
std::wstring OwnUserSid();

std::wstring PipePath(const std::wstring& userSid, const std::string& name);

/// The pipe's security descriptor as text: owned by the user, everything for the user, nothing for anybody else.
std::wstring PipeDescriptorText(const std::wstring& userSid);

/// An open pipe handle for overlapped use, or why there is none.
struct OpenedPipe {
    platform::OwnedHandle pipe;
    /// Empty when simply nobody listens.
    std::wstring failure;
    /// True when all ends of the engine's pipe are taken.
    bool isBusy = false;
};

/// Which instance of a pipe: the first one fails when the pipe is there already.
enum class Instance : std::int32_t { First, Further };

/// Makes one end for a front end to connect to.
OpenedPipe MakePipe(const std::string& name, Instance instance);

/// Opens the other end, if the pipe is this user's; waits for an engine whose ends are all taken.
OpenedPipe OpenPipe(const std::string& name, std::chrono::milliseconds patience);

/// True when the owner of this pipe is the user himself: others cannot make such a one.
bool IsOwnPipe(void* pipe, const std::wstring& userSid);

} // namespace local_socket
