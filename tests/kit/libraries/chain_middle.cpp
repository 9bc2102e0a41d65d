#include "CommonControllerLib/Export.h"

extern "C" int ChainEnd();
extern "C" CONTROLLER_API int ChainMiddle();

int ChainMiddle() {
    return ChainEnd();
}
