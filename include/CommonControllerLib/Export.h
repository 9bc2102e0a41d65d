#pragma once

/// Exports a symbol from a shared library; all other symbols are hidden on both systems.
///
/// On Windows the macro is "dllexport" for users of a library as well: the linker imports what a program does not
/// define itself, and a test may define the same functions in its program to replace those of the library.
#if defined(_WIN32)
#define CONTROLLER_API __declspec(dllexport)
#else
#define CONTROLLER_API __attribute__((visibility("default")))
#endif
