/* Calls the library in C by the names of its functions alone, like programs in other languages do. Windows only. */

#include <windows.h>

#include <stdio.h>
#include <stdlib.h>

typedef int(__cdecl* OpenFunction)(const char*, void**);
typedef int(__cdecl* AnswerFunction)(void*, char**);
typedef int(__cdecl* CloseFunction)(void*);
typedef void(__cdecl* FreeFunction)(char*);

static void* Find(HMODULE library, const char* name) {
    const FARPROC function = GetProcAddress(library, name);
    if (function == NULL) {
        printf("there is no %s\n", name);
        exit(1);
    }
    return (void*)function;
}

/* The argument is the absolute path of the library. It finds the libraries that it needs beside itself. */
int wmain(int count, wchar_t** values) {
    void* engine = NULL;
    char* jobs = NULL;
    const HMODULE library = LoadLibraryExW(count == 2 ? values[1] : L"", NULL, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (library == NULL) {
        printf("the library cannot be loaded: error %lu\n", GetLastError());
        return 1;
    }
    if (((OpenFunction)Find(library, "controller_engine_open"))(NULL, &engine) != 0 ||
        ((AnswerFunction)Find(library, "controller_engine_list"))(engine, &jobs) != 0) {
        printf("the engine cannot be opened\n");
        return 1;
    }
    puts(jobs);
    ((FreeFunction)Find(library, "controller_c_free"))(jobs);
    return ((CloseFunction)Find(library, "controller_engine_close"))(engine);
}
