#include "kit/UnreadableFile.h"

#include <windows.h>

#include "platform/files/NativePath.h"

UnreadableFile::UnreadableFile(const std::wstring& filePath)
    : path(filePath), held(reinterpret_cast<std::uintptr_t>(
                          CreateFileW(platform::ToNativeText(path).c_str(), GENERIC_READ,
                                      FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr))) {}

UnreadableFile::~UnreadableFile() {
    CloseHandle(reinterpret_cast<HANDLE>(held));
}
