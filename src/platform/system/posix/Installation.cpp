#include "platform/system/Installation.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include <link.h>

#include "platform/files/NativePath.h"
#include "platform/files/posix/SystemPath.h"
#include "platform/system/Environment.h"

namespace platform {
namespace {

struct FreeDeleter {
    void operator()(char* text) const { std::free(text); }
};

/// An object of the file that contains this code.
const char ownObject = 0;

struct Search {
    std::uintptr_t address;
    /// The name of the file that contains the address; empty for the program.
    std::string name;
};

bool Contains(const dl_phdr_info& file, const ElfW(Phdr) & segment, std::uintptr_t address) {
    const std::uintptr_t start = file.dlpi_addr + segment.p_vaddr;
    return segment.p_type == PT_LOAD && address >= start && address - start < segment.p_memsz;
}

int CompareWithFile(dl_phdr_info* file, std::size_t, void* data) {
    auto& search = *static_cast<Search*>(data);
    const auto contains = [&](const ElfW(Phdr) & segment) { return Contains(*file, segment, search.address); };
    if (std::any_of(file->dlpi_phdr, file->dlpi_phdr + file->dlpi_phnum, contains)) {
        search.name = file->dlpi_name;
        return 1;
    }
    return 0;
}

/// The absolute path of a shared library, without symbolic links; nothing for a program.
std::unique_ptr<char, FreeDeleter> OwnLibrary() {
    // Unlike dladdr this also works in statically linked programs.
    Search search{reinterpret_cast<std::uintptr_t>(&ownObject), {}};
    dl_iterate_phdr(CompareWithFile, &search);
    return std::unique_ptr<char, FreeDeleter>(search.name.empty() ? nullptr : realpath(search.name.c_str(), nullptr));
}

} // namespace

std::wstring OwnDirectory() {
    const auto library = OwnLibrary();
    return library ? ParentDirectory(LibraryPath(library.get())) : ProgramDirectory();
}

} // namespace platform
