// SPDX-License-Identifier: MIT
#pragma once

namespace bench {

/// Registers the measurements of single operations on the processor's largest vectors, which are to
/// be at least those of AVX2.
void RegisterMachine();

}  // namespace bench
