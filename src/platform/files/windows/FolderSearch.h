#pragma once

#include <string>

#include <windows.h>

#include "platform/system/Error.h"

namespace platform {

/// The entries of one folder without "." and "..", in the system's order.
class FolderSearch {
public:
    /// `folder` as library text.
    explicit FolderSearch(const std::wstring& folder);
    ~FolderSearch();
    FolderSearch(const FolderSearch&) = delete;
    FolderSearch& operator=(const FolderSearch&) = delete;

    /// The next entry, valid until the next call; null at the end and after a failure.
    const WIN32_FIND_DATAW* Next();
    /// Why the search ended before the end; no error otherwise.
    const Error& Outcome() const { return outcome; }

private:
    [[nodiscard]] bool Advance();

    WIN32_FIND_DATAW entry = {};
    HANDLE handle = INVALID_HANDLE_VALUE;
    bool isFirst = true;
    Error outcome;
};

} // namespace platform
