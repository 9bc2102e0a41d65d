#include "CommonControllerLib/Export.h"

extern "C" CONTROLLER_API int ChainEnd();

int ChainEnd() {
    return 42;
}
