#ifndef START_PROGRAM_H
#define START_PROGRAM_H

#include "controller_plugins/c_function_module.h"

/* Starts a program with one argument and names its process in the answer. 0 for success; otherwise the answer says why
 * not. All texts are UTF-8. */
long start_program(const char* program, const char* argument, const char* directory, controller_run_answer* answer);

#endif
