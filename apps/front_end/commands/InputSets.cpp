#include "front_end/commands/InputSets.h"

#include <algorithm>
#include <cstddef>

#include "front_end/commands/FileRoles.h"

namespace front_end {
namespace {

/// The end of the name that starts at `begin`: the next comma or the end of the text.
std::size_t EndOfName(const std::wstring& typed, std::size_t begin) {
    std::size_t end = typed.size();
    while (end > begin) {
        if (IsFile(AbsolutePath(typed.substr(begin, end - begin)))) {
            return end;
        }
        const std::size_t comma = typed.rfind(L',', end - 1);
        end = comma == std::wstring::npos ? begin : comma;
    }
    return std::min(typed.find(L',', begin), typed.size());
}

} // namespace

std::vector<std::wstring> FilesOfInputSet(const std::wstring& typed) {
    std::vector<std::wstring> files;
    std::size_t begin = 0;
    while (begin < typed.size()) {
        const std::size_t end = EndOfName(typed, begin);
        if (end > begin) {
            files.push_back(AbsolutePath(typed.substr(begin, end - begin)));
        }
        begin = end + 1;
    }
    return files;
}

} // namespace front_end
