#include "transport/local_socket/ProcessEnd.h"

#include <windows.h>

namespace local_socket {

/// A module's exit functions run inside DllMain, when the system has already ended all other threads, wherever they
/// were: there is nothing to wait for, and what they had locked stays locked. So nothing is called; the transmitters
/// and their threads live until the process does not. For the same reason the module must not be unloaded: it is
/// pinned.
void RegisterExitHandler(void (*stop)()) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(stop), &module);
}

} // namespace local_socket
