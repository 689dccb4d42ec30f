// What a shared build of the databases offers to its hosts; see paramdb/platform/core/export.h.
#pragma once

#if !defined(PARAMDB_SHARED)
#define PARAMDB_DATABASE_API
#elif !defined(_WIN32)
#define PARAMDB_DATABASE_API __attribute__((visibility("default")))
#elif defined(PARAMDB_DATABASE_EXPORTS) // while the library itself is compiled
#define PARAMDB_DATABASE_API __declspec(dllexport)
#else
#define PARAMDB_DATABASE_API __declspec(dllimport)
#endif
