#include "kit/UnreadableFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

std::string NativePath(const std::wstring& path) {
    return text::ToUtf8(platform::ToNativeText(path));
}

} // namespace

// Permissions do not restrict the superuser, so a directory replaces the file meanwhile. Open handles continue to write
// to the file.
UnreadableFile::UnreadableFile(const std::wstring& filePath) : path(filePath) {
    std::rename(NativePath(path).c_str(), NativePath(path + L".hidden").c_str());
    ::mkdir(NativePath(path).c_str(), 0700);
}

UnreadableFile::~UnreadableFile() {
    ::rmdir(NativePath(path).c_str());
    std::rename(NativePath(path + L".hidden").c_str(), NativePath(path).c_str());
}
