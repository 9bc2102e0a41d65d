#include "controller_web/http/Sessions.h"

#include <algorithm>

#include "controller_web/http/HeaderValues.h"
#include "controller_web/http/Secrets.h"

namespace web {
namespace {

constexpr std::int64_t lifeWithoutUse = std::int64_t{12} * 60 * 60;

} // namespace

std::string Sessions::Open() {
    RemoveUnused();
    if (sessions.size() == most) {
        sessions.erase(std::min_element(sessions.begin(), sessions.end(), [](const Session& one, const Session& other) {
            return one.used < other.used;
        }));
    }
    sessions.push_back({NewSecret(), clock()});
    return sessions.back().secret;
}

bool Sessions::Use(std::string_view secret) {
    RemoveUnused();
    bool isKnown = false;
    for (Session& session : sessions) {
        if (AreEqualSecrets(session.secret, secret)) {
            session.used = clock();
            isKnown = true;
        }
    }
    return isKnown;
}

void Sessions::RemoveUnused() {
    const std::int64_t oldest = clock() - lifeWithoutUse;
    std::erase_if(sessions, [oldest](const Session& session) { return session.used < oldest; });
}

} // namespace web
