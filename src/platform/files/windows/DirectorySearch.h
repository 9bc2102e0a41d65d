#pragma once

#include <string>

#include <windows.h>

#include "platform/system/Error.h"

namespace platform {

/// Iterates over the entries of one directory without "." and "..", in the system's order.
class DirectorySearch {
public:
    /// `directory` is library text.
    explicit DirectorySearch(const std::wstring& directory);
    ~DirectorySearch();
    DirectorySearch(const DirectorySearch&) = delete;
    DirectorySearch& operator=(const DirectorySearch&) = delete;

    /// The next entry, valid until the next call; null at the end and after a failure.
    const WIN32_FIND_DATAW* Next();
    /// Why the iteration stopped early; no error if it reached the end.
    const Error& Outcome() const { return outcome; }

private:
    [[nodiscard]] bool Advance();

    WIN32_FIND_DATAW entry = {};
    HANDLE handle = INVALID_HANDLE_VALUE;
    bool isFirst = true;
    Error outcome;
};

} // namespace platform
