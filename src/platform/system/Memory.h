#pragma once

namespace platform {

/// From now on large blocks of memory go back to the system as soon as they are freed, for a process that lives long
/// and now and then needs much for a moment. To be called once by main(), before there are other threads.
void TrimHeapEagerly();

} // namespace platform
