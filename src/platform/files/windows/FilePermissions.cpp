#include "platform/files/FilePermissions.h"

#include <array>
#include <cstddef>

#include <windows.h>

#include <aclapi.h>

#include "platform/files/NativePath.h"
#include "platform/files/windows/SystemPath.h"
#include "platform/system/windows/LocalMemory.h"

namespace platform {
namespace {

constexpr DWORD anyChange = GENERIC_ALL | WRITE_DAC | WRITE_OWNER;
constexpr DWORD changesOfFile = anyChange | GENERIC_WRITE | FILE_WRITE_DATA | FILE_APPEND_DATA;
constexpr DWORD changesOfEntries = anyChange | FILE_DELETE_CHILD;

/// The access rights that one entry of the access list grants to everyone.
DWORD RightsForEverybody(ACL& list, DWORD index, PSID everybody) {
    void* entry = nullptr;
    if (GetAce(&list, index, &entry) == 0) {
        return 0;
    }
    auto* const allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    const bool counts = allowed->Header.AceType == ACCESS_ALLOWED_ACE_TYPE &&
                        (allowed->Header.AceFlags & INHERIT_ONLY_ACE) == 0 &&
                        EqualSid(&allowed->SidStart, everybody) != 0;
    return counts ? allowed->Mask : 0;
}

/// True if the access list grants one of these rights to everyone. A path without an access list counts as open to
/// everyone; one whose list cannot be read is not examined further.
bool GivesEverybody(const std::wstring& path, DWORD rights) {
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    std::wstring name = SystemPath(path);
    if (GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list, nullptr,
                              &descriptor) != ERROR_SUCCESS) {
        return false;
    }
    const LocalMemory<void> owned(descriptor);
    std::array<std::byte, SECURITY_MAX_SID_SIZE> everybody{};
    DWORD size = SECURITY_MAX_SID_SIZE;
    CreateWellKnownSid(WinWorldSid, nullptr, everybody.data(), &size);
    DWORD given = list == nullptr ? rights : 0;
    for (DWORD index = 0; list != nullptr && index < list->AceCount; ++index) {
        given |= RightsForEverybody(*list, index, everybody.data());
    }
    return (given & rights) != 0;
}

} // namespace

bool IsWorldWritable(const std::wstring& file) {
    return GivesEverybody(file, changesOfFile) || GivesEverybody(ParentDirectory(file), changesOfEntries);
}

bool IsReplaceableByOthers(const std::wstring& directory) {
    return GivesEverybody(directory, changesOfEntries);
}

} // namespace platform
