#include "platform/system/Machine.h"

#include <array>
#include <memory>
#include <string>

#include <pwd.h>
#include <sys/mman.h>
#include <unistd.h>

#include "text/Text.h"

namespace platform {

std::wstring MachineName() {
    std::array<char, 256> name = {};
    return gethostname(name.data(), name.size() - 1) == 0 ? text::FromUtf8(name.data()) : std::wstring();
}

std::wstring AccountName() {
    std::array<char, 16 * 1024> buffer = {};
    passwd entry = {};
    passwd* found = nullptr;
    const int code = getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found);
    return code == 0 && found != nullptr ? text::FromUtf8(found->pw_name) : std::to_wstring(geteuid());
}

void PreferLargePages(void* memory, std::size_t size) {
    constexpr std::size_t smallest = std::size_t{32} << 20;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    if (size >= smallest && std::align(page, page, memory, size) != nullptr) {
        // Refused where large pages are switched off.
        (void)madvise(memory, size / page * page, MADV_HUGEPAGE);
    }
}

} // namespace platform
