#include "formats/zip/ArchiveFile.h"

#include "formats/zip/ZipError.h"

namespace zip {

ArchiveFile::ArchiveFile(const std::wstring& path) {
    if (const platform::Error result = file.OpenForReading(path, &size); !result) {
        throw Problem{L"cannot be opened: " + result.Text()};
    }
}

void ArchiveFile::Read(std::uint64_t offset, std::size_t count, std::string& bytes) const {
    if (offset > size || count > size - offset) {
        throw Problem{L"is cut off"};
    }
    bytes.resize(count);
    std::size_t done = 0;
    while (done < count) {
        std::size_t read = 0;
        if (const platform::Error result = file.ReadAt(offset + done, bytes.data() + done, count - done, read);
            !result) {
            throw Problem{L"cannot be read: " + result.Text()};
        }
        if (read == 0) {
            throw Problem{L"is cut off"};
        }
        done += read;
    }
}

} // namespace zip
