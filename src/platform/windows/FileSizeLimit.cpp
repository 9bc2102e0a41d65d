#include "platform/FileSizeLimit.h"

namespace platform {

void FailBeyondFileSizeLimit() {}

} // namespace platform
