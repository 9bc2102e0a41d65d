/*
 * A program in C with a job engine of its own: runs the jobs of a jobs file and shows each change as JSON.
 * Usage: run_jobs_file SETTINGS_FILE JOBS_FILE
 * Relative paths in the jobs file are relative to the current directory.
 */

#include "controller_c/controller_c.h"

#include <stdio.h>
#include <stdlib.h>

enum { LOOK_MILLISECONDS = 200, LARGEST_FILE = 1 << 20 };

/* The content of a file, to be freed; null if it cannot be read or is too large. */
static char* ReadText(const char* path) {
    FILE* const file = fopen(path, "rb");
    char* const text = file == NULL ? NULL : malloc(LARGEST_FILE + 1);
    size_t length = 0;
    if (text != NULL) {
        length = fread(text, 1, LARGEST_FILE, file);
        text[length] = '\0';
    }
    if (file != NULL) {
        fclose(file);
    }
    if (length == 0 || length == LARGEST_FILE) {
        free(text);
        return NULL;
    }
    return text;
}

static int Fail(const char* what) {
    fprintf(stderr, "run_jobs_file: %s: %s\n", what, controller_c_last_error());
    return 1;
}

/* Shows and frees a document of the library. */
static void Show(char* json) {
    if (json != NULL) {
        puts(json);
        fflush(stdout);
    }
    controller_c_free(json);
}

/* Shows each change until all jobs have ended. */
static int RunAll(controller_engine* engine) {
    int32_t result = CONTROLLER_RESULT_TIMEOUT;
    while (result == CONTROLLER_RESULT_TIMEOUT) {
        char* jobs = NULL;
        char* changed = NULL;
        result = controller_engine_wait(engine, "all", LOOK_MILLISECONDS, &jobs);
        controller_c_free(jobs);
        if (controller_engine_step(engine, &changed) != CONTROLLER_RESULT_OK) {
            return Fail("a step failed");
        }
        Show(changed);
    }
    return result == CONTROLLER_RESULT_OK ? 0 : Fail("the wait failed");
}

static int EnqueueAndRun(controller_engine* engine, const char* jobs) {
    char* answer = NULL;
    const int32_t result = controller_engine_enqueue(engine, jobs, &answer);
    Show(answer);
    if (result != CONTROLLER_RESULT_OK) {
        return Fail("not all jobs were enqueued");
    }
    return RunAll(engine);
}

int main(int count, char** values) {
    controller_engine* engine = NULL;
    char* jobs = NULL;
    int exitCode = 1;
    if (count != 3) {
        fputs("Usage: run_jobs_file SETTINGS_FILE JOBS_FILE\n", stderr);
        return 2;
    }
    if (controller_c_version() < CONTROLLER_C_VERSION) {
        fputs("run_jobs_file: the installed library is older than this program\n", stderr);
        return 1;
    }
    jobs = ReadText(values[2]);
    if (jobs == NULL) {
        fprintf(stderr, "run_jobs_file: %s cannot be read or is no jobs file\n", values[2]);
        return 1;
    }
    if (controller_engine_open(values[1], &engine) == CONTROLLER_RESULT_OK) {
        exitCode = EnqueueAndRun(engine, jobs);
    } else {
        Fail("the engine does not open");
    }
    free(jobs);
    if (controller_engine_close(engine) != CONTROLLER_RESULT_OK) {
        return Fail("the engine does not close");
    }
    return exitCode;
}
