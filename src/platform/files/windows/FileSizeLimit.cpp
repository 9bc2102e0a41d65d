#include "platform/files/FileSizeLimit.h"

namespace platform {

void IgnoreFileSizeSignal() {}

} // namespace platform
