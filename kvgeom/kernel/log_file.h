// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

namespace kvgeom::detail {

// Opens the assertion log for appending, created where it is missing. Null when that fails. The
// stream doesn't buffer: what is handed to it in one piece reaches the end of the file in one
// piece, whatever other processes append at the same time.
std::FILE* OpenLog();

}  // namespace kvgeom::detail
