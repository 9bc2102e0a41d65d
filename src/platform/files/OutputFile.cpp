#include "platform/files/OutputFile.h"

namespace platform {

Error OutputFile::Open(const std::wstring& path, bool truncate, AppendTo target) {
    return file.OpenForAppending(path, truncate, target);
}

void OutputFile::Close() {
    file.Close();
}

Error OutputFile::Write(std::string_view bytes) {
    return file.Write(bytes);
}

std::uint64_t OutputFile::Size() const {
    return file.Size();
}

} // namespace platform
