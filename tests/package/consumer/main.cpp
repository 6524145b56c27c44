// SPDX-License-Identifier: MIT

// What an application does most: may the pipe along a leg touch an object? The README shows the
// lines between the marks.

#include <cstdio>

// [readme]
#include <kvgeom/kvgeom.h>

// The object: its box in its own coordinates, and where it stands in the model.
const GBox box = BuildBox(0, 0, 0, 2, 1, 3);
const GTransf placement = RotateTransf(0.3, {0, 0, 1}) * TranslateTransf({5, 0, 0});

// The pipe: 5 cm thick, from one end to the other.
const GPosition from = {0, 1, 1};
const GPosition to = {12, 1, 1};

int MayTouch() {
    const GUnitVector along = BuildUnitVector(from, to);
    GBoreLine pipe = BuildBoreLine(from, along, GDistance(from, to), 0.0, 0.05);
    pipe *= placement.Inverse();  // into the object's coordinates
    return pipe && box;           // 0 proves that they miss each other
}
// [readme]

int main() {
    const GBoreLine above = BuildBoreLine({0, 9, 1}, {1, 0, 0}, 12.0, 0.0, 0.05);
    const int misses = above * placement.Inverse() && box;
    std::printf("the pipe %s the object\n", MayTouch() ? "may touch" : "misses");
    return MayTouch() == 1 && misses == 0 ? 0 : 1;
}
