// What a shared build offers to its hosts. Everything else stays inside the library.
//
//     class PARAMDB_API CLake { ... };            // the library
//     class PARAMDB_CONTROLS_API CPentadCtrl ...  // the controls
//     class PARAMDB_VIEWS_API ListView ...        // their windows
//
// Marked is what has a definition of its own in a source file and is called from outside, or from functions
// and templates in headers that run outside. A nested class that has such members is marked too. What is
// whole in a header needs no mark.
//
// PARAMDB_SHARED tells a shared build, to hosts too: the CMake package and pkg-config hand it on. In a static
// build the marks are empty, so a host's own library that holds this one does not offer it to others.
#pragma once

#ifndef PARAMDB_SHARED

#define PARAMDB_API
#define PARAMDB_CONTROLS_API
#define PARAMDB_VIEWS_API

#elif defined(_WIN32)

#ifdef PARAMDB_EXPORTS // while the library itself is compiled
#define PARAMDB_API __declspec(dllexport)
#else
#define PARAMDB_API __declspec(dllimport)
#endif
#ifdef PARAMDB_CONTROLS_EXPORTS // while the controls are compiled
#define PARAMDB_CONTROLS_API __declspec(dllexport)
#else
#define PARAMDB_CONTROLS_API __declspec(dllimport)
#endif
#ifdef PARAMDB_VIEWS_EXPORTS // while their windows are compiled
#define PARAMDB_VIEWS_API __declspec(dllexport)
#else
#define PARAMDB_VIEWS_API __declspec(dllimport)
#endif

#ifdef _MSC_VER
// Members and bases of the standard library are the same on both sides, since both sides have one compiler.
// A class template is exported where it is instantiated, not where that is promised.
#pragma warning(disable : 4251 4275 4910)
#endif

#else

#define PARAMDB_API __attribute__((visibility("default")))
#define PARAMDB_CONTROLS_API __attribute__((visibility("default")))
#define PARAMDB_VIEWS_API __attribute__((visibility("default")))

#endif
