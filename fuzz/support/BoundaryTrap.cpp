#include "formats/Boundary.h"

#include <cstdio>
#include <exception>

#include "fuzz/support/Require.h"

/// In the place of the companion's own: an exception that the guard of a function catches is a reader's fault, and not
/// an error to be logged.
void boundary::LogException(const char* operation) noexcept {
    try {
        throw;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s: %s\n", operation, exception.what());
    } catch (...) {
        std::fprintf(stderr, "%s: an exception of no known type\n", operation);
    }
    fuzz::Require(false, "a reader throws nothing");
}
