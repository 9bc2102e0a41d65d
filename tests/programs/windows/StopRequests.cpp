#include "programs/StopRequests.h"

void IgnoreStopRequests() {}
