// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr GPosition kP = {1, 2, 3};

// What a matrix holds before a builder overwrites it.
constexpr G4x4 kBefore = {{7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7}};

G4x4 Of(const GTransf& t) {
    G4x4 a;
    a = t;
    return a;
}

// Runs a builder on a used matrix; expects what it writes, its messages and its error code.
template <class Builder>
void Expect(Builder builder, const G4x4& expected, const Messages& messages = {}, long code = 0) {
    MessageRecorder recorder;
    G4x4 m = kBefore;
    long err = 77;
    builder(m, &err);
    EXPECT_EQ(Bits(m), Bits(expected));
    EXPECT_EQ(recorder.Take(), messages);
    EXPECT_EQ(err, code);
}

TEST(G4x4Builders, WriteWhatTheirTransformationsAre) {
    const GUnitVector axis = BuildUnitVector(1, -2, 2);
    Expect(
        [](G4x4& m, long* err) {
            Scale4x4(2, {1, 1, 1}, m, err);
        },
        {{2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, -1, -1, -1, 1}});
    Expect([](G4x4& m, long* err) { Scale4x4(-2, m, err); },
           {{-2, 0, 0, 0, 0, -2, 0, 0, 0, 0, -2, 0, 0, 0, 0, 1}});
    Expect([](G4x4& m, long* err) { Scale4x4(2, 0, 4, m, err); },
           {{2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1}});
    Expect(
        [](G4x4& m, long* err) {
            Scale4x4(1, 2, 3, {1, 1, 5}, m, err);
        },
        {{1, 0, 0, 0, 0, 2, 0, 0, 0, 0, 3, 0, 0, -1, -10, 1}});
    Expect(
        [](G4x4& m, long* err) {
            Translate4x4({4, 5, 6}, m, err);
        },
        Of(TranslateTransf({4, 5, 6})));
    Expect([&](G4x4& m, long* err) { Rotate4x4(0.6, 0.8, axis, m, err); },
           Of(RotateTransf(0.6, 0.8, axis)));
    Expect([&](G4x4& m, long* err) { Rotate4x4(0.6, 0.8, axis, kP, m, err); },
           Of(RotateTransf(0.6, 0.8, axis, kP)));
    Expect([&](G4x4& m, long* err) { Rotate4x4(0.7, axis, m, err); }, Of(RotateTransf(0.7, axis)));
    Expect([&](G4x4& m, long* err) { Rotate4x4(0.7, axis, kP, m, err); },
           Of(RotateTransf(0.7, axis, kP)));
    Expect([&](G4x4& m, long* err) { Reflect4x4(axis, m, err); }, Of(ReflectTransf(axis)));
    Expect([&](G4x4& m, long* err) { Reflect4x4(axis, kP, m, err); }, Of(ReflectTransf(axis, kP)));
    Expect([&](G4x4& m, long* err) { Coordinate4x4(kP, axis, kY, m, err); },
           Of(CoordinateTransf(kP, axis, kY)));
}

TEST(G4x4Builders, RefuseBadAnglesAndCollinearAxes) {
    const char* const bad_angle = "u4x4: rotation cosine and sine invalid\n";
    const char* const collinear = "u4x4: new axis vectors are collinear\n";
    const char* const null_axis = "GUnitVector: using a NULL unit vector";
    const char* const beyond_one = "GMatrix: abs(cosine or sine of angle) > 1.0";
    const GUnitVector null = {0, 0, 0};
    Expect([](G4x4& m, long* err) { Rotate4x4(0.6, 0.7, kZ, m, err); }, kBefore, {bad_angle}, 2);
    Expect([&](G4x4& m, long* err) { Rotate4x4(0.6, 0.7, null, kP, m, err); }, kBefore,
           {null_axis, bad_angle}, 2);
    Expect([](G4x4& m, long* err) { Rotate4x4(1 + 1e-11, 0, kZ, m, err); },
           Of(RotateTransf(1 + 1e-11, 0, kZ)), {beyond_one});
    Expect([](G4x4& m, long* err) { Rotate4x4(1 + 1e-10, 0, kZ, m, err); }, kBefore, {bad_angle},
           2);
    Expect([&](G4x4& m, long* err) { Rotate4x4(0.7, null, m, err); }, Of(RotateTransf(0.7, null)),
           {null_axis});
    Expect([&](G4x4& m, long* err) { Rotate4x4(0.7, null, kP, m, err); },
           Of(RotateTransf(0.7, null, kP)), {null_axis});
    Expect([&](G4x4& m, long* err) { Reflect4x4(null, m, err); }, Of(ReflectTransf(null)),
           {null_axis});
    Expect([&](G4x4& m, long* err) { Reflect4x4(null, kP, m, err); }, Of(ReflectTransf(null, kP)),
           {null_axis});
    for (const GUnitVector& y : {kX, GUnitVector{-1, 0, 0}, GUnitVector{1, 0.9e-10, 0}}) {
        Expect([&](G4x4& m, long* err) { Coordinate4x4(kP, kX, y, m, err); }, kBefore, {collinear},
               2);
    }
}

TEST(MirrorPlane, IsReadBackFromTheReflection) {
    GUnitVector normal = {7, 7, 7};
    GVector offset = {7, 7, 7};
    EXPECT_EQ(GetMirrorPlaneNormal(ReflectTransf(kY, {0, 2, 0}), normal, offset), 0);
    EXPECT_EQ(Numbers(normal), Numbers(kY));
    EXPECT_EQ(Numbers(offset), Numbers(GVector{0, 4, 0}));
    EXPECT_EQ(GetMirrorPlaneNormal(RotateTransf(-1.0, 0.0, kZ), normal, offset), 0);
    EXPECT_EQ(Numbers(normal), Numbers(kX)) << "a half turn has one too";
    normal = {7, 7, 7};
    EXPECT_EQ(GetMirrorPlaneNormal(TranslateTransf({1, 2, 3}), normal, offset), 2);
    EXPECT_EQ(Numbers(normal), Numbers(GUnitVector{7, 7, 7}));
    EXPECT_EQ(Numbers(offset), Numbers(GVector{1, 2, 3}))
        << "the translation is given all the same";
    Random random(34);
    for (int i = 0; i < 2000; ++i) {
        GUnitVector n = random.Direction();
        // Without its first or its first two components now and then.
        if (i % 3 > 0) {
            n = BuildUnitVector(0, i % 3 > 1 ? 0 : n.m_y, n.m_z);
        }
        EXPECT_EQ(GetMirrorPlaneNormal(ReflectTransf(n), normal, offset), 0);
        const double first = n.m_x != 0 ? n.m_x : n.m_y != 0 ? n.m_y : n.m_z;
        EXPECT_LT(Distance(GVector(normal), (first > 0 ? 1.0 : -1.0) * n), 1e-10);
    }
}

TEST(TransfHealer, RestoresWhatHasDrifted) {
    GTransf drifted = BuildTransf(RotateTransf(0.3, kZ).m_matrix, {1, 2, 3}, 4, 1, 0, 1);
    drifted.m_matrix.m_elements[1][2] += 1e-9;
    GTransf out = {};
    int healed = 77;
    long err = 77;
    GTransfHealer(drifted, out, &healed, &err);
    EXPECT_EQ(healed, 1);
    EXPECT_EQ(err, 0);
    EXPECT_LT(Distance(out.m_matrix * out.m_matrix.Transpose(), kIdentity), 1e-14);
    GTransf rest = out;
    rest.m_matrix = drifted.m_matrix;
    EXPECT_EQ(Bits(rest), Bits(drifted)) << "only the matrix changes";
    GTransfHealer(drifted, drifted, &healed, &err);
    EXPECT_EQ(Bits(drifted), Bits(out)) << "in place";

    GTransf hopeless = drifted;
    hopeless.m_matrix = {{{10, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    GTransfHealer(hopeless, out, &healed, &err);
    EXPECT_EQ(healed, 0);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(Bits(out), Bits(hopeless));
}

}  // namespace
}  // namespace kvgeom::test
