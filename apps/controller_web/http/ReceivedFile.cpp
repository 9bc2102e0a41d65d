#include "controller_web/http/ReceivedFile.h"

#include <utility>

#include "controller_web/http/Secrets.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "text/Text.h"

namespace web {

ReceivedFile::~ReceivedFile() {
    file.Close();
    if (!path.empty()) {
        // What cannot be removed now is removed by the next server.
        (void)platform::RemoveFile(path);
    }
}

platform::Error ReceivedFile::Create(const std::wstring& directory) {
    if (const platform::Error result = platform::EnsurePrivateDirectory(directory); !result) {
        return result;
    }
    std::wstring fresh = directory + L"\\" + text::FromUtf8(NewSecret());
    const platform::Error result = file.CreateNew(fresh, {});
    if (result) {
        path = std::move(fresh);
    }
    return result;
}

platform::Error ReceivedFile::Append(std::string_view bytes) {
    const platform::Error result = file.Write(bytes);
    if (result) {
        size += bytes.size();
    }
    return result;
}

platform::Error ReceivedFile::MoveTo(const std::wstring& destination) {
    file.Close();
    const platform::Error result = platform::RenameFile(path, destination);
    if (result) {
        path.clear();
    }
    return result;
}

} // namespace web
