#include "platform/files/NativePath.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace platform {
namespace {

constexpr const wchar_t* separators = L"\\/";

std::vector<std::wstring> ComponentsFrom(const std::wstring& path, std::size_t begin) {
    std::vector<std::wstring> components;
    while (begin < path.size()) {
        const std::size_t end = std::min(path.find_first_of(separators, begin), path.size());
        components.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return components;
}

void Step(std::vector<std::wstring>& resolved, const std::wstring& component) {
    if (component.empty() || component == L".") {
        return;
    }
    if (component != L"..") {
        resolved.push_back(component);
    } else if (!resolved.empty()) {
        resolved.pop_back();
    }
}

std::wstring Resolved(const std::wstring& path) {
    const std::size_t root = RootLength(path);
    std::vector<std::wstring> resolved;
    for (const std::wstring& component : ComponentsFrom(path, root)) {
        Step(resolved, component);
    }
    std::wstring text = path.substr(0, root);
    std::replace(text.begin(), text.end(), L'/', L'\\');
    for (const std::wstring& component : resolved) {
        const bool needsSeparator = !text.empty() && text.back() != L'\\';
        text.append(needsSeparator ? L"\\" : L"").append(component);
    }
    return text;
}

} // namespace

std::wstring WithoutTrailingSeparators(const std::wstring& path) {
    std::size_t end = path.size();
    for (const std::size_t root = RootLength(path); end > root && IsSeparator(path[end - 1]);) {
        --end;
    }
    return path.substr(0, end);
}

std::wstring ToNativeText(const std::wstring& path) {
    std::wstring native = path;
    std::replace_if(native.begin(), native.end(), IsSeparator, nativeSeparator);
    return native;
}

std::wstring ResolveAgainst(const std::wstring& directory, const std::wstring& path) {
    return Resolved(Rebase(directory, path));
}

std::wstring ParentDirectory(const std::wstring& path) {
    const std::size_t root = RootLength(path);
    if (path.size() <= root) {
        return {};
    }
    const std::size_t last = path.find_last_of(separators);
    const bool belowRoot = last == std::wstring::npos || last < root;
    return belowRoot ? path.substr(0, root) : WithoutTrailingSeparators(path.substr(0, last));
}

std::wstring FileName(const std::wstring& path) {
    const std::size_t last = path.find_last_of(separators);
    return last == std::wstring::npos ? path : path.substr(last + 1);
}

} // namespace platform
