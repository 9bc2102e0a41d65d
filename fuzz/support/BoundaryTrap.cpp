#include "formats/Boundary.h"

#include <cstdio>
#include <exception>

#include "fuzz/support/Require.h"

/// Replaces the companion's definition: in a fuzz target, an exception caught by the guard of a function is a defect of
/// the parser.
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
