#include "local_process/LocalProcess.h"

namespace local_process {

LocalProcess& Module() {
    static LocalProcess module;
    return module;
}

} // namespace local_process
