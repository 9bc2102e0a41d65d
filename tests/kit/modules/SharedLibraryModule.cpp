#include "CommonControllerLib/Export.h"

extern "C" CONTROLLER_API int Answer();

int Answer() {
    return 42;
}
