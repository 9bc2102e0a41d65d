#pragma once

/// Marks what the shared libraries hand out; everything else is hidden on both systems.
///
/// On Windows the mark stays "export" for the users of a library too: the linker imports what a program does not define
/// itself, and a test may define the same functions in the program in the library's place.
#if defined(_WIN32)
#define CONTROLLER_API __declspec(dllexport)
#else
#define CONTROLLER_API __attribute__((visibility("default")))
#endif
