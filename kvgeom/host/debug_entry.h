// SPDX-License-Identifier: MIT
#pragma once

namespace kvgeom::detail {

// CheckDebugRegEntryCoreMath for the library's own use. All names share one cached result.
int ReadOrCreateRegEntry(const char* name, int default_value);

}  // namespace kvgeom::detail
