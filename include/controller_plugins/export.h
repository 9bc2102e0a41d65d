#ifndef CONTROLLER_PLUGINS_EXPORT_H
#define CONTROLLER_PLUGINS_EXPORT_H

/* Exports a function from a plug-in, in C and C++. */
#if defined(_WIN32)
#define CONTROLLER_PLUGIN_EXPORT __declspec(dllexport)
#else
#define CONTROLLER_PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

#endif
