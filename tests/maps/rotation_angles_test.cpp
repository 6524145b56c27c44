// SPDX-License-Identifier: MIT

// What rests on sin, cos or atan2, whose last bits are the C library's affair.

#include "tests/support/messages.h"

namespace kvgeom::test {
namespace {

TEST(RotationAngles, AreReadBackWithTheSmallerOfTheTwoSolutions) {
    const double q = kPi / 2;
    const std::pair<GTransf, GVector> rows[] = {
        {RotateTransf(q, kY) * RotateTransf(0.2, kZ), {-0.2, q, 0}},
        {RotateTransf(-q, kY) * RotateTransf(0.2, kZ), {0.2, -q, 0}},
        {RotateTransf(2, kX) * RotateTransf(3, kY) * RotateTransf(1, kZ),
         {2 - kPi, kPi - 3, 1 - kPi}},
        // A tie goes to the second solution: both sums are 3 pi / 2.
        {BuildTransf({{{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}}, {0, 0, 0}, 1, 1, 0, 0), {0, -kPi, -q}},
    };
    for (const auto& [t, expected] : rows) {
        GVector angles;
        GPosition origin;
        EXPECT_EQ(GetRotAngles(t, &angles.m_x, &angles.m_y, &angles.m_z, origin), 0);
        EXPECT_LT(Distance(angles, expected), 2e-15) << expected.m_x << " " << expected.m_y;
    }
}

TEST(RotationAngles, InThePlaneAreThoseOfAFullTurn) {
    const double tol = GetRelativeTolerance();
    const std::pair<double, double> rows[] = {{-0.5, 2 * kPi - 0.5}, {kPi, kPi},
                                              {tol / 2, 0},          {-tol / 2, 0},
                                              {2 * tol, 2 * tol},    {-2 * tol, 2 * kPi - 2 * tol}};
    for (const auto& [turn, expected] : rows) {
        long err = 77;
        EXPECT_DOUBLE_EQ(GiveRotAngle(RotateTransf2d(turn), &err), expected);
        EXPECT_EQ(err, 77);
    }
}

}  // namespace
}  // namespace kvgeom::test
