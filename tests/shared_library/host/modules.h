// Libraries that a program opens by name while it runs, and what the test's own one offers.
#pragma once

#include <cstddef>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

// Null if the system does not find it or a library that it needs.
inline void* OpenModule(char const* name) {
#ifdef _WIN32
    return LoadLibraryA(name);
#else
    return dlopen(name, RTLD_NOW | RTLD_LOCAL);
#endif
}

template <class Function>
Function* FindFunction(void* module, char const* name) {
#ifdef _WIN32
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name)));
#else
    return reinterpret_cast<Function*>(dlsym(module, name));
#endif
}

// Where a part of the program finds the objects that one process has one of.
struct Places {
    void* lake;
    void* table_set;
    void* server;
    void* sea;
    void* tree_memory;
    void const* first_table;
    unsigned int message;
    unsigned int late_message;
    int language;
};
using TellPlacesFunction = void(Places* places);

// Loads a parameter file and says what it holds. 0 for success.
using RunExampleFunction = int(char const* file);
