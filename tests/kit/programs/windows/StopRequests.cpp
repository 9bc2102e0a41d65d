#include "kit/programs/StopRequests.h"

void IgnoreStopRequests() {}
