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
    if (const platform::Error error = platform::EnsurePrivateDirectory(directory)) {
        return error;
    }
    std::wstring fresh = directory + L"\\" + text::FromUtf8(NewSecret());
    const platform::Error error = file.CreateNew(fresh, {});
    if (!error) {
        path = std::move(fresh);
    }
    return error;
}

platform::Error ReceivedFile::Append(std::string_view bytes) {
    const platform::Error error = file.Write(bytes);
    if (!error) {
        size += bytes.size();
    }
    return error;
}

platform::Error ReceivedFile::MoveTo(const std::wstring& destination) {
    file.Close();
    const platform::Error error = platform::RenameFile(path, destination);
    if (!error) {
        path.clear();
    }
    return error;
}

} // namespace web
