#include "engine/FreshFolder.h"

#include "text/Numbers.h"

#include <cstdint>

platform::Error MakeFreshFolder(const std::wstring& path, const FolderCalls& calls, std::wstring& folder) {
    folder = path;
    for (std::int32_t number = 1;; ++number) {
        if (!calls.exists(folder)) {
            const platform::Error error = calls.create(folder);
            const bool madeByAnother = error.kind == platform::ErrorKind::AlreadyExists && calls.exists(folder);
            if (!madeByAnother) {
                return error;
            }
        }
        folder = path + L"_" + numbers::DecimalText(number);
    }
}
