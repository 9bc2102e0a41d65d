#include "support/PathPieces.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr std::size_t longestPiece = 255;

/// Returns the position after the last separator, at least `from`.
std::size_t NameBegin(const std::wstring& path, std::size_t from) {
    const std::size_t separator = path.find_last_of(L"\\/");
    return separator == std::wstring::npos ? from : std::max(from, separator + 1);
}

/// Returns the position of the last dot of the name that begins at `name`; the end of the path if there is none.
std::size_t ExtensionBegin(const std::wstring& path, std::size_t name) {
    const std::size_t dot = path.rfind(L'.');
    return dot == std::wstring::npos || dot < name ? path.size() : dot;
}

bool Fits(const PathPieces& pieces) {
    return std::max({pieces.directory.size(), pieces.name.size(), pieces.extension.size()}) <= longestPiece;
}

} // namespace

PathPieces SplitPath(const std::wstring& path) {
    const std::size_t directory = path.size() > 1 && path[1] == L':' ? 2 : 0;
    const std::size_t name = NameBegin(path, directory);
    const std::size_t extension = ExtensionBegin(path, name);
    PathPieces pieces{path.substr(0, directory), path.substr(directory, name - directory),
                      path.substr(name, extension - name), path.substr(extension)};
    return Fits(pieces) ? pieces : PathPieces{};
}
