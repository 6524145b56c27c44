// SPDX-License-Identifier: MIT
#pragma once

namespace kvgeom::detail {

// What CheckDebugRegEntryCoreMath does, for the library's own use: one cached result for all names.
int ReadOrCreateRegEntry(const char* name, int default_value);

}  // namespace kvgeom::detail
