// SPDX-License-Identifier: MIT
#pragma once

namespace kvgeom::detail {

// The codes that operations with a trailing `long*` store, and that the conversions return. A
// caller's pointer is always valid; operations that test their arguments store kSuccess first.
constexpr long kSuccess = 0;
constexpr long kLimitExceeded = 1;
constexpr long kPreconditionFailed = 2;

}  // namespace kvgeom::detail
