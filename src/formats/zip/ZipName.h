#pragma once

#include "CommonControllerLib/Export.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zip {

/// Returns the name of an entry as text, with slashes; the final slash of a directory is kept. Throws `Problem` for a
/// name that could lead out of the directory that it is unpacked into, or that one of the systems does not allow.
std::wstring CheckedName(std::string_view bytes);

/// True for the name of one file, without directories, that `CheckedName` accepts.
CONTROLLER_API bool IsSafeFileName(std::string_view bytes);

/// The names of one archive. Each file or directory may occur once, and no two names may differ only in ASCII case.
class NameSet {
public:
    /// Adds `name` (a result of `CheckedName`). Throws `Problem` if it conflicts with an earlier name.
    void Add(const std::wstring& name);

private:
    struct Known {
        std::wstring spelling;
        bool isDirectory = false;
        /// True if it has an entry of its own; false if it only occurs as the parent directory of another.
        bool isEntry = false;
    };
    void AddParents(const std::wstring& path);

    std::map<std::wstring, Known> names;
};

} // namespace zip
