#include "formats/Boundary.h"

#include <exception>
#include <new>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "text/Text.h"

namespace boundary {

namespace {

std::string ReasonOfCurrentException() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return "out of memory";
    } catch (const std::exception& exception) {
        return exception.what();
    } catch (...) {
        return "unknown reason";
    }
}

} // namespace

void LogException(const char* operation) noexcept {
    try {
        ControllerCSWrapper::WriteErrorLog(
            text::FromUtf8(std::string(operation) + " failed: " + ReasonOfCurrentException()));
    } catch (...) {
        return; // no memory for the log message either
    }
}

} // namespace boundary
