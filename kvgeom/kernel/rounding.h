// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

// Rounding to decimals.

/// Rounds value to a number of decimals: *rounded = floor(value * 10^digits + 0.5) / 10^digits, so
/// halves go towards +infinity. Negative digits round to tens, hundreds and so on. Where the
/// formula would leave the finite numbers for a finite value, *rounded is value itself for positive
/// digits and 0.0 for negative ones.
///
/// If text is not null and textSize not 0, *rounded is also printed into text with that many
/// decimals, the separator a point in any locale. textSize counts the terminator. For digits
/// outside 0..9, and where the number does not fit, text becomes the empty string: a cut number is
/// a wrong number.
KVGEOM_API void KVRoundValue(double value, int digits, double* rounded, unsigned int textSize,
                             char* text);
