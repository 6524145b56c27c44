// SPDX-License-Identifier: MIT
#pragma once

/// The library's infinity. It stands for an absent limit, makes the null position and the null box,
/// and is what a division by a near-zero number gives. It is an ordinary number: true infinities
/// and NaN are never results of finite arguments where a fallback is stated.
inline constexpr double kGInfinity = 1e30;
