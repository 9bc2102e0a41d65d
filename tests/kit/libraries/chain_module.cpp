#include "CommonControllerLib/Export.h"

extern "C" int ChainMiddle();
extern "C" CONTROLLER_API int Answer();

int Answer() {
    return ChainMiddle();
}
