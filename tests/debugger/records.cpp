// SPDX-License-Identifier: MIT

// Records for the debugger to show when it stops in ShowAll.

#include <kvgeom/kvgeom.h>

#include <limits>

using Limits = std::numeric_limits<double>;
GPosition points[40] = {{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 0, 0}};
// Two boxes reversed by less and by as much as the tolerance that main sets.
GBox real = {{1.25, 2, 3}, {1, 2, 3}}, null = {{1.5, 2, 3}, {1, 2, 3}};
GBox empty = {{1e30, 1e30, 1e30}, {-1e30, -1e30, -1e30}};
GBox2d planar = {{-1, -2.5}, {Limits::quiet_NaN(), Limits::infinity()}};
GMatrix2d matrix = {{{1, 2}, {3, 4}}};
GTransf transf = {{{{0, 1, 0}, {-1, 0, 0}, {0, 0, -1}}}, {5, 6, 7}, 2, 1, 1, 7};
G4x4 homogeneous = {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}};
GClipVolume volume = {{{1, 0, 0, 5}, {0, -1, 0, 0.1}}, 2}, crowded = {{}, 200};
GBoreLine line = {{0, 1, 2}, {1, 0, 0}, 1e30, -3, 0.05};
GBoreCone cone = {line, {9, 8, 7}};
GPtFence fence = {4, points, {0, 0, 1}, 2, -1};
GPtFence dangling = {3, reinterpret_cast<GPosition*>(16), {0, 0, 1}, 2, -1};
GPtFrustum frustum = {fence, {1, 1, 9}};
GRtPrism prism = {transf, points, 4000000000UL, 3};
const GPosition& reference = points[2];
GBox* wild = reinterpret_cast<GBox*>(16);

extern "C" void ShowAll() {}

int main() {
    long err = 0;
    SetFitTolerance(1, &err);
    SetDistanceTolerance(0.5, &err);
    ShowAll();
    return static_cast<int>(err);
}
