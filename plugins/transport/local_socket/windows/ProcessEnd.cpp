#include "transport/local_socket/ProcessEnd.h"

#include <windows.h>

namespace local_socket {

/// Calls nothing. Exit functions of a module run inside DllMain, after the system has ended all other threads: no
/// thread is left to wait for, and their locks stay locked. The transmitters live until the process ends. For the same
/// reason the module must not be unloaded, so it is pinned.
void RegisterExitHandler(void (*stop)()) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(stop), &module);
}

} // namespace local_socket
