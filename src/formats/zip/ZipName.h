#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zip {

/// The name of an entry as text, with slashes; a directory's slash at the end is kept. Throws `Problem` for every name
/// that could leave the directory that it is unpacked into, or that one of the systems cannot hold.
std::wstring CheckedName(std::string_view bytes);

/// The names of one archive; each file or directory may appear once, and no two may differ in ASCII case alone.
class NameSet {
public:
    /// Throws `Problem` when `name` (as `CheckedName` gives it) cannot stand beside those before it.
    void Add(const std::wstring& name);

private:
    struct Known {
        std::wstring spelling;
        bool isDirectory = false;
        /// Has an entry of its own, and is not just the directory of another.
        bool isEntry = false;
    };
    void AddParents(const std::wstring& path);

    std::map<std::wstring, Known> names;
};

} // namespace zip
