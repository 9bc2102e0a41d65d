#include "kit/SystemHelpers.h"

#include <cstdlib>
#include <ctime>

#include <windows.h>

#include <sddl.h>

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

bool OnWindows() {
    return true;
}

bool MakeLink(const std::wstring& target, const std::wstring& link) {
    constexpr DWORD unprivileged = 2; // SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE
    const DWORD kind = platform::IsDirectory(target) ? DWORD{SYMBOLIC_LINK_FLAG_DIRECTORY} : DWORD{0};
    const BOOLEAN made = CreateSymbolicLinkW(platform::ToNativeText(link).c_str(),
                                             platform::ToNativeText(target).c_str(), kind | unprivileged);
    // Some implementations report success without creating the link.
    return made != 0 && GetFileAttributesW(platform::ToNativeText(link).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void MakeReadOnly(const std::wstring& path) {
    const std::wstring native = platform::ToNativeText(path);
    SetFileAttributesW(native.c_str(), GetFileAttributesW(native.c_str()) | FILE_ATTRIBUTE_READONLY);
}

std::optional<std::uint32_t> PermissionsOf(const std::wstring&) {
    return std::nullopt;
}

void SetPermissions(const std::wstring&, std::uint32_t) {}

void LetEverybodyWrite(const std::wstring& path) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;WD)", SDDL_REVISION_1, &descriptor, nullptr);
    SetFileSecurityW(platform::ToNativeText(path).c_str(), DACL_SECURITY_INFORMATION, descriptor);
    LocalFree(descriptor);
}

bool GiveAway(const std::wstring&) {
    return false;
}

bool MakeFileOfBytes(const std::wstring&, const std::string&) {
    return false;
}

bool MakeNamedPipe(const std::wstring&) {
    return false;
}

ScopedTimeZone::ScopedTimeZone(const char* zone) {
    _putenv_s("TZ", zone);
    _tzset();
}

ScopedTimeZone::~ScopedTimeZone() {
    _putenv_s("TZ", "");
    _tzset();
}

ScopedCurrentDirectory::ScopedCurrentDirectory(const std::wstring& directory) : previous(platform::CurrentDirectory()) {
    SetCurrentDirectoryW(platform::ToNativeText(directory).c_str());
}

ScopedCurrentDirectory::~ScopedCurrentDirectory() {
    SetCurrentDirectoryW(platform::ToNativeText(previous).c_str());
}

ScopedOpenFileLimit::ScopedOpenFileLimit(std::uint64_t) {}

ScopedOpenFileLimit::~ScopedOpenFileLimit() {
    (void)previous;
}

FileHold::FileHold(const std::wstring& path)
    : handle(reinterpret_cast<std::intptr_t>(CreateFileW(platform::ToNativeText(path).c_str(), GENERIC_READ,
                                                         FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr))) {}

FileHold::~FileHold() {
    CloseHandle(reinterpret_cast<HANDLE>(handle));
}

bool FileHold::Protects() {
    return true;
}

RedirectedOutput::RedirectedOutput(std::intptr_t target)
    : previous(reinterpret_cast<std::intptr_t>(GetStdHandle(STD_OUTPUT_HANDLE))) {
    SetStdHandle(STD_OUTPUT_HANDLE, reinterpret_cast<HANDLE>(target));
}

RedirectedOutput RedirectedOutput::ToFile(const std::wstring& path) {
    const HANDLE file = CreateFileW(platform::ToNativeText(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    CREATE_ALWAYS, 0, nullptr);
    return RedirectedOutput(reinterpret_cast<std::intptr_t>(file));
}

RedirectedOutput RedirectedOutput::ToUnwritable() {
    const HANDLE readOnly =
        CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    return RedirectedOutput(reinterpret_cast<std::intptr_t>(readOnly));
}

RedirectedOutput RedirectedOutput::ToBrokenPipe() {
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (CreatePipe(&readEnd, &writeEnd, nullptr, 0) != 0) {
        CloseHandle(readEnd);
    }
    return RedirectedOutput(reinterpret_cast<std::intptr_t>(writeEnd));
}

RedirectedOutput::~RedirectedOutput() {
    CloseHandle(GetStdHandle(STD_OUTPUT_HANDLE));
    SetStdHandle(STD_OUTPUT_HANDLE, reinterpret_cast<HANDLE>(previous));
}
