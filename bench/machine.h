// SPDX-License-Identifier: MIT
#pragma once

namespace bench {

/// Registers the measurements of single operations; for a processor with AVX-512.
void RegisterMachine();

}  // namespace bench
