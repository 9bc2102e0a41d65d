#include "CommonControllerLib/PathFuncs.h"

#include <cstddef>
#include <initializer_list>

namespace {

void Append(std::wstring& path, const std::wstring& part) {
    if (part.empty()) {
        return;
    }
    if (!path.empty() && path.back() != L'\\') {
        path += L'\\';
    }
    path += part;
}

std::wstring JoinAll(std::initializer_list<const std::wstring*> parts) {
    std::size_t length = 0;
    for (const std::wstring* part : parts) {
        length += part->size() + 1;
    }
    std::wstring path;
    path.reserve(length);
    for (const std::wstring* part : parts) {
        Append(path, *part);
    }
    return path;
}

} // namespace

std::wstring PathFuncs::Join(const std::wstring& first, const std::wstring& second) {
    return JoinAll({&first, &second});
}

std::wstring PathFuncs::Join(const std::wstring& first, const std::wstring& second, const std::wstring& third) {
    return JoinAll({&first, &second, &third});
}

std::wstring PathFuncs::Join(const std::wstring& first, const std::wstring& second, const std::wstring& third,
                             const std::wstring& fourth) {
    return JoinAll({&first, &second, &third, &fourth});
}
