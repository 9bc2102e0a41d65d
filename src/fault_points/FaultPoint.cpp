#include "fault_points/FaultPoint.h"

// The only function of this file, so that a linker that has another definition does not take this one from the library.
void fault_points::ReachFaultPoint(FaultPoint) {}
