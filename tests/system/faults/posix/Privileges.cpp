#include "system/faults/posix/Privileges.h"

#include <stdexcept>

#include <sys/prctl.h>
#include <unistd.h>

#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

constexpr uid_t nobody = 65534;
constexpr uid_t root = 0;

/// The saved user id allows returning; started programs do not inherit it. The leak checker traces its own process,
/// which a change of user forbids.
void Become(uid_t user) {
    if (setresuid(user, user, root) != 0 || prctl(PR_SET_DUMPABLE, 1) != 0) {
        throw std::runtime_error("cannot change the user");
    }
}

bool IsRoot() {
    uid_t real = root;
    uid_t effective = root;
    uid_t saved = root;
    return getresuid(&real, &effective, &saved) == 0 && saved == root;
}

} // namespace

OrdinaryUser::OrdinaryUser() {
    if (IsRoot()) {
        Become(nobody);
    }
}

OrdinaryUser::~OrdinaryUser() {
    if (IsRoot()) {
        Become(root);
    }
}

std::string OrdinaryUser::Problem(const std::wstring& program) {
    const std::string path = text::ToUtf8(platform::ToNativeText(program));
    return access(path.c_str(), X_OK) == 0 ? "" : "an ordinary user may not start " + path;
}
