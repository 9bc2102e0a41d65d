#include "platform/system/Machine.h"

#include <array>
#include <string>

#include <pwd.h>
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

} // namespace platform
