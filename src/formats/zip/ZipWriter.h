#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zip {

/// Makes a ZIP file in memory. Equal entries give equal bytes: all have the same time and no permissions. Limits as in
/// `Archive`, which the caller checks by reading the file. Threads: one at a time.
class Writer {
public:
    /// Adds a file, deflated where that saves space. Throws `Problem` for a name that `CheckedName` refuses, and for
    /// content of 4 GiB or more.
    void Add(std::string_view name, std::string_view content);

    /// The size of what has been added.
    std::size_t Size() const { return bytes.size() + directory.size(); }

    /// The whole file. Called once, last.
    std::string Finish();

private:
    std::string bytes;
    std::string directory;
    std::size_t count = 0;
};

} // namespace zip
