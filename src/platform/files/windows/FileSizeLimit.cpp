#include "platform/files/FileSizeLimit.h"

namespace platform {

void FailBeyondFileSizeLimit() {}

} // namespace platform
