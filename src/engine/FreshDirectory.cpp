#include "engine/FreshDirectory.h"

#include "text/Numbers.h"

#include <cstdint>

platform::Error MakeFreshDirectory(const std::wstring& path, const DirectoryCalls& calls, std::wstring& directory) {
    directory = path;
    for (std::int32_t number = 1;; ++number) {
        if (!calls.exists(directory)) {
            const platform::Error error = calls.create(directory);
            const bool madeByAnother = error.kind == platform::ErrorKind::AlreadyExists && calls.exists(directory);
            if (!madeByAnother) {
                return error;
            }
        }
        directory = path + L"_" + numbers::DecimalText(number);
    }
}
