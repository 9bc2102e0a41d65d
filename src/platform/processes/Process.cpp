#include "platform/processes/Process.h"

#include "platform/processes/InheritedHandle.h"
#include "text/Hexadecimal.h"

namespace platform {

std::wstring InheritedHandleText(void* handle) {
    return text::HandleText(reinterpret_cast<std::uintptr_t>(handle));
}

OwnedHandle TakeInheritedHandle(const std::wstring& text) {
    const std::uint64_t number = text.starts_with(L"0x") ? text::ReadHandle(text).value_or(0) : 0;
    void* const handle = reinterpret_cast<void*>(static_cast<std::uintptr_t>(number));
    return handle != nullptr && SetCloseOnExec(handle) ? OwnedHandle(handle) : OwnedHandle();
}

} // namespace platform
