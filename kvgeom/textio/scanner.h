// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

namespace kvgeom::detail {

// fscanf under the C locale, whatever the locale of the process and the thread: "%lf" for each
// double, "%lu", "%hu". The first conversion that fails ends the call; its number and those after
// it stay unchanged, and the stream is where the C library's scanner left it. So it matters which
// numbers are scanned by one call: of "--5", a call takes the first sign, and the next reads -5.
void Scan(std::FILE* f, double& x);
void Scan(std::FILE* f, double& x, double& y);
void Scan(std::FILE* f, double& x, double& y, double& z);
void Scan(std::FILE* f, double& x, double& y, double& z, double& w);
void Scan(std::FILE* f, unsigned long& count);
void Scan(std::FILE* f, unsigned short& number);

}  // namespace kvgeom::detail
