// SPDX-License-Identifier: MIT

// What an application does most. The README shows the lines between the marks.

#include <cstdio>

// [readme]
#include <kvgeom/kvgeom.h>

// May a pipe of 5 cm radius touch the object with this box, which stands in the model as placed?
int MayTouch(const GPosition& from, const GPosition& to, const GBox& box,
             const GTransf& placement) {
    const GUnitVector along = BuildUnitVector(from, to);
    GBoreLine pipe = BuildBoreLine(from, along, GDistance(from, to), 0.0, 0.05);
    pipe *= placement.Inverse();  // into the coordinates of the object
    return pipe && box;           // 0 proves that they miss each other
}
// [readme]

int main() {
    const GBox box = BuildBox(0, 0, 0, 2, 1, 3);
    const GTransf placement = RotateTransf(0.3, {0, 0, 1}) * TranslateTransf({5, 0, 0});
    const int through = MayTouch({0, 1, 1}, {12, 1, 1}, box, placement);
    const int above = MayTouch({0, 9, 1}, {12, 9, 1}, box, placement);
    std::printf("the pipes' answers: %d %d\n", through, above);
    return through == 1 && above == 0 ? 0 : 1;
}
