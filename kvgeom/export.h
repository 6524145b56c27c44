// SPDX-License-Identifier: MIT
#pragma once

/// Marks a function that the shared library exports. KVGEOM_STATIC is defined by the build (and by
/// the installed package) of a static library, KVGEOM_BUILDING only while the library itself is
/// compiled.
#if defined(KVGEOM_STATIC)
#define KVGEOM_API
#elif defined(_WIN32)
#if defined(KVGEOM_BUILDING)
#define KVGEOM_API __declspec(dllexport)
#else
#define KVGEOM_API __declspec(dllimport)
#endif
#else
#define KVGEOM_API __attribute__((visibility("default")))
#endif
