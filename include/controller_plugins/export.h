#ifndef CONTROLLER_PLUGINS_EXPORT_H
#define CONTROLLER_PLUGINS_EXPORT_H

/* Marks what a plug-in hands out, in C and in C++. */
#if defined(_WIN32)
#define CONTROLLER_PLUGIN_EXPORT __declspec(dllexport)
#else
#define CONTROLLER_PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

#endif
