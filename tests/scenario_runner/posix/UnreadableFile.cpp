#include "scenario_runner/UnreadableFile.h"

#include <sys/resource.h>

namespace {

rlim_t ExchangeOpenFileLimit(rlim_t limit) {
    rlimit current = {};
    getrlimit(RLIMIT_NOFILE, &current);
    const rlim_t previous = current.rlim_cur;
    current.rlim_cur = limit;
    setrlimit(RLIMIT_NOFILE, &current);
    return previous;
}

} // namespace

// Permissions say nothing to the superuser: so nothing at all can be opened.
UnreadableFile::UnreadableFile(const std::wstring&) : held(ExchangeOpenFileLimit(0)) {}

UnreadableFile::~UnreadableFile() {
    ExchangeOpenFileLimit(held);
}
