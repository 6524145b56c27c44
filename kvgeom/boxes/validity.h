// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

typedef struct tagGBox GBox;
typedef struct tagGClipVolume GClipVolume;
typedef struct tagGBox2d GBox2d;

// The validity checks pass a message for each violation they find (assertion_hook.h). They never
// change the record.

/// The check of each corner. Their order is not tested.
KVGEOM_API void Gassert_valid(const GBox& box);

/// Finds nothing wrong.
KVGEOM_API void Gassert_valid(const GClipVolume& volume);

// The checks of planar records pass no message, unless the library was built with
// KVGEOM_DIAGNOSTICS: then the messages are those of the twins in space, under the planar names.

/// The check of each corner.
KVGEOM_API void Gassert_valid(const GBox2d& box);
