#include "services/log/RotatingFile.h"

#include <utility>

#include "platform/files/Directory.h"
#include "platform/files/FileLock.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/terminal/Console.h"
#include "text/EscapeControls.h"
#include "text/Text.h"

namespace log_file {

void RotatingFile::SetPath(const std::wstring& path) {
    if (path == currentPath) {
        return;
    }
    currentPath = path;
    file.Close();
    lastLook = -1;
    complained = false;
    lost = 0;
    isTorn = false;
}

void RotatingFile::Append(std::string_view record, std::int64_t second) {
    if (currentPath.empty()) {
        return;
    }
    if (second != lastLook) {
        lastLook = second;
        LookAfterFile();
    }
    if (IsTooLargeWith(record)) {
        Rotate(record);
    }
    if (!file.IsOpen()) {
        ++lost;
        return;
    }
    const std::string note = NoteOfLost();
    if (const platform::Error result = note.empty() ? file.Write(record) : file.Write(note + std::string(record));
        !result) {
        return Lose(result);
    }
    size += note.size() + record.size();
    lost = 0;
    isTorn = false;
    complained = false;
}

void RotatingFile::Lose(const platform::Error& error) {
    const std::uint64_t newSize = file.Size();
    isTorn = isTorn || newSize != size;
    size = newSize;
    ++lost;
    ComplainOnce(error);
}

/// Returns an empty string if no record was lost.
std::string RotatingFile::NoteOfLost() const {
    if (lost == 0) {
        return {};
    }
    const std::string lineEnd = isTorn ? "\n" : "";
    return lineEnd + "(Messages that could not be written here: " + std::to_string(lost) + ")\n";
}

/// Checks that the path still names the open file, and updates the size, which other processes may have changed.
void RotatingFile::LookAfterFile() {
    const std::optional<platform::FileIdentity> found = platform::IdentityOf(currentPath);
    if (!found) {
        file.Close(); // a removed file may keep its name while another process has it open
    }
    if (file.IsOpen() && found == identity) {
        size = file.Size();
    } else {
        OpenFile();
    }
}

/// On failure keeps an open file open: a record in a renamed file is better than a lost record.
void RotatingFile::OpenFile() {
    // Read before the file is opened: if another process renames it in between, the next check detects the difference.
    const std::optional<platform::FileIdentity> named = platform::IdentityOf(currentPath);
    platform::File opened;
    platform::Error result = platform::EnsurePrivateDirectories(platform::ParentDirectory(currentPath));
    if (result) {
        result = opened.OpenForAppending(currentPath, false, platform::AppendTo::FileOrDevice);
    }
    if (!result) {
        return ComplainOnce(result);
    }
    file = std::move(opened);
    identity = named;
    size = file.Size();
    rotateAt = limits.bytes;
}

bool RotatingFile::IsTooLargeWith(std::string_view record) const {
    return file.IsOpen() && size > 0 && size + record.size() > rotateAt;
}

void RotatingFile::Rotate(std::string_view record) {
    LookAfterFile();
    if (!IsTooLargeWith(record)) {
        return; // another process was quicker
    }
    // Two processes that rotate at the same time would overwrite a file that is not the oldest.
    platform::FileLock lock;
    const platform::Error result = lock.Take(currentPath + L".lock");
    if (result.kind == platform::ErrorKind::InUse) {
        return; // another process is rotating: write the record to the current file
    }
    LookAfterFile();
    if (!IsTooLargeWith(record)) {
        return;
    }
    if (result && ShiftFiles()) {
        OpenFile();
    } else {
        rotateAt = size + limits.bytes / 16;
    }
}

/// Starts with the oldest file, so that a failure in between leaves a gap and loses no file.
bool RotatingFile::ShiftFiles() const {
    for (int generation = limits.files - 2; generation >= 0; --generation) {
        const platform::Error result = platform::RenameFile(NameOf(generation), NameOf(generation + 1));
        if (!result && result.kind != platform::ErrorKind::NotFound) {
            return false;
        }
    }
    return true;
}

std::wstring RotatingFile::NameOf(int generation) const {
    return generation == 0 ? currentPath : currentPath + L'.' + std::to_wstring(generation);
}

void RotatingFile::ComplainOnce(const platform::Error& error) {
    if (std::exchange(complained, true)) {
        return;
    }
    platform::WriteErrorOutput(text::ToUtf8(L"The log file " + text::Escaped(platform::ToNativeText(currentPath)) +
                                            L" cannot be written: " + error.Text() +
                                            L". Messages are lost until it can be.\n"));
}

} // namespace log_file
