// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr double kTol = 1e-6;

GClipVolume Of(GBox box) {
    GClipVolume volume;
    EXPECT_EQ(ConvertGBoxToGClipVolume(&box, &volume), 0);
    return volume;
}

int Classify(const GClipVolume& volume, const GPosition& p) {
    int result = 77;
    long err = 77;
    IsPtInClipVolume(volume, p, &result, &err);
    EXPECT_EQ(err, 0);
    return result;
}

GClipVolume WithCount(GClipVolume volume, unsigned char count) {
    volume.m_count = count;
    return volume;
}

// The planes as numbers, without the padding behind the count.
std::vector<double> Planes(const GClipVolume& volume) {
    std::vector<double> numbers(&volume.m_planes[0][0], &volume.m_planes[0][0] + 24);
    numbers.push_back(volume.m_count);
    return numbers;
}

double Difference(const GClipVolume& a, const GClipVolume& b) {
    double largest = a.m_count == b.m_count ? 0 : kInf;
    const std::vector<double> x = Planes(a);
    const std::vector<double> y = Planes(b);
    for (size_t i = 0; i < x.size(); ++i) {
        const double difference = std::fabs(x[i] - y[i]);
        largest = difference <= largest ? largest : difference;
    }
    return largest;
}

const GBox kBox = {{0, 0, 0}, {1, 2, 3}};

TEST(ClipVolume, IsMadeOfTheSidesOfABox) {
    EXPECT_EQ(Planes(Of({{1, 2, 3}, {4, 5, 6}})),
              (std::vector<double>{0, 1, 0, -2, 1, 0, 0,  -1, 0, -1, 0, 5, -1,
                                   0, 0, 4, 0,  0, 1, -3, 0,  0, -1, 6, 6}));
    EXPECT_EQ(Numbers(ClipVolumeRange(Of(kBox))), Numbers(kBox));
}

TEST(ClipVolume, IsBuiltFromAtMostSixPlanes) {
    MessageRecorder recorder;
    const double values[] = {1, 0, 0, -1, 0, 2, 0, 4};
    EXPECT_EQ(Planes(BuildClipVolume(2, values)),
              (std::vector<double>{1, 0, 0, -1, 0, 1, 0, 2, 0, 0, 0, 0, 0,
                                   0, 0, 0, 0,  0, 0, 0, 0, 0, 0, 0, 2}));
    EXPECT_EQ(recorder.Take(), Messages{});
    const std::vector<double> many(7 * 4, 1.0);
    const GClipVolume six = BuildClipVolume(7, many.data());
    EXPECT_EQ(six.m_count, 6);
    EXPECT_DOUBLE_EQ(six.m_planes[5][3], 1 / std::sqrt(3.0));
    const std::vector<GPosition> points(300, {1, 2, 3});
    const std::vector<GUnitVector> normals(300, {0, 2, 0});
    const GClipVolume clamped = BuildClipVolume(300, points.data(), normals.data());
    EXPECT_EQ(clamped.m_count, 6);
    EXPECT_EQ(clamped.m_planes[5][1], 2) << "normals are used as they are";
    EXPECT_EQ(clamped.m_planes[5][3], -4);
    const char* const message = "GClipVolume: can't build more than 6 planes";
    EXPECT_EQ(recorder.Take(), (Messages{message, message}));
    EXPECT_EQ(Planes(BuildClipVolume(0, nullptr, nullptr)), std::vector<double>(25, 0.0));
    // A plane without a normal, or with one too short to square, stays as it is.
    const double degenerate[] = {0, 0, 0, 5, 1e-200, 0, 0, 7};
    EXPECT_EQ(BuildClipVolume(2, degenerate).m_planes[0][3], 5);
    EXPECT_EQ(BuildClipVolume(2, degenerate).m_planes[1][3], 7);
}

TEST(ClipVolume, TellsInsideBoundaryAndOutside) {
    const GClipVolume volume = Of(kBox);
    const struct {
        GPosition p;
        int expected;
    } rows[] = {
        {{0.5, 1, 1.5}, 1},      {{1 + 5e-7, 1, 1.5}, 2},
        {{1 + 2e-6, 1, 1.5}, 0}, {{1 - 5e-7, 1, 1.5}, 2},
        {{1 - 2e-6, 1, 1.5}, 1}, {{0, 1, 5}, 0},
        {{0.5, -kTol, 1.5}, 2},  {{0.5, -Up(kTol), 1.5}, 0},
        {{0.5, kTol, 1.5}, 2},   {{0.5, Up(kTol), 1.5}, 1},
        {{1, 2, 3}, 2},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Classify(volume, row.p), row.expected) << row.p.m_x << " " << row.p.m_y;
    }
    EXPECT_EQ(Classify(WithCount(volume, 0), {1e9, 0, 0}), 1);
    // Only the planes that are counted count, and never more than there are.
    EXPECT_EQ(Classify(WithCount(volume, 5), {0.5, 1, 1e9}), 1);
    EXPECT_EQ(Classify(WithCount(volume, 255), {0.5, 1, 1.5}), 1);
    // Planes are normalised: a distance of 1e-6 is not to be had by long normals.
    const double doubled[] = {2, 0, 0, 2};
    EXPECT_EQ(Classify(BuildClipVolume(1, doubled), {-1 - 0.9e-6, 0, 0}), 2);
    GClipVolume unnormalised = BuildClipVolume(1, doubled);
    std::copy_n(doubled, 4, unnormalised.m_planes[0]);
    EXPECT_EQ(Classify(unnormalised, {-1 - 0.9e-6, 0, 0}), 2);
    EXPECT_EQ(unnormalised.m_planes[0][0], 2) << "but not in a constant volume";
}

TEST(ClipVolume, MeetsAndHoldsBoxesWithinTheTolerance) {
    const GClipVolume unit = Of({{0, 0, 0}, {1, 1, 1}});
    const struct {
        GBox box;
        int meets;
        int holds;
    } rows[] = {
        {{{1.5, 1.5, 1.5}, {2, 2, 2}}, 0, 0},
        {{{0.5, 0.5, 0.5}, {1.5, 1.5, 1.5}}, 1, 0},
        {{{1 + 5e-7, 1 + 5e-7, 1 + 5e-7}, {2, 2, 2}}, 1, 0},
        {{{0.2, 0.2, 0.2}, {0.8, 0.8, 0.8}}, 1, 1},
        {{{0, 0, 0}, {1, 1, 1}}, 1, 1},
        {{{0, 0, 0}, {1, 1, 1 + 5e-7}}, 1, 1},
        {{{0, -2e-6, 0}, {1, 1, 1}}, 1, 0},
        {{{-1, -1, -1}, {-2e-6, 1, 1}}, 0, 0},
        {{{-9, -9, -9}, {9, 9, 9}}, 1, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(unit && row.box, row.meets) << row.box.m_low.m_x;
        EXPECT_EQ(unit >> row.box, row.holds) << row.box.m_low.m_x;
    }
    EXPECT_EQ(WithCount(unit, 0) && rows[0].box, 1);
    EXPECT_EQ(WithCount(unit, 0) >> rows[0].box, 1);
    EXPECT_EQ(WithCount(unit, 200) && rows[0].box, 0);
}

// A bounded volume that is no box: the planes of a tetrahedron or more around a point.
GClipVolume RandomVolume(Random& random) {
    const GBox box = random.ProperBox();
    GClipVolume volume = Of(box) * random.Similarity();
    // Two of the six planes tilted about the middle.
    const GPosition p = ClipVolumeRange(volume)[0];
    for (int k = 0; k < 2; ++k) {
        const GVector tilted =
            GVector{volume.m_planes[k][0], volume.m_planes[k][1], volume.m_planes[k][2]} +
            0.3 * random.Direction();
        const GUnitVector n = BuildUnitVector(tilted.m_x, tilted.m_y, tilted.m_z);
        volume.m_planes[k][0] = n.m_x;
        volume.m_planes[k][1] = n.m_y;
        volume.m_planes[k][2] = n.m_z;
        volume.m_planes[k][3] = -(p % n) + random.Uniform(0, 1);
    }
    return volume;
}

TEST(ClipVolume, NeverMissesABoxThatItShares) {
    Random random(44);
    int missed = 0;
    int shared = 0;
    for (int i = 0; i < 20000; ++i) {
        const GClipVolume volume = RandomVolume(random);
        const GBox box = random.ProperBox();
        const int meets = volume && box;
        missed += meets ? 0 : 1;
        for (int k = 0; k < 4; ++k) {
            const GPosition p = Sample(random, box);
            if (Classify(volume, p) != 0) {
                EXPECT_EQ(meets, 1);
                ++shared;
            } else {
                EXPECT_EQ(volume >> box, 0);
            }
        }
    }
    EXPECT_GT(missed, 1000);
    EXPECT_GT(shared, 1000);
}

TEST(ClipVolume, MapsAndMovesWithItsPoints) {
    Random random(45);
    for (int i = 0; i < 3000; ++i) {
        const GClipVolume volume = RandomVolume(random);
        const GTransf t = random.Similarity();
        const GPosition p = random.Point();
        const int place = Classify(volume, p);
        if (place == 2) {
            continue;  // the band that scaling narrows or widens
        }
        EXPECT_EQ(Classify(volume * t, p * t), place);
        GClipVolume in_place = volume;
        in_place *= t;
        EXPECT_EQ(Planes(in_place), Planes(volume * t));
        const GVector v = random.Vector();
        EXPECT_EQ(Classify(volume + v, p + v), place);
        EXPECT_EQ(Classify(volume - v, p - v), place);
        // A matrix turns about the origin; its transpose in the column form turns likewise.
        const GMatrix m = random.RotationMatrix();
        GPosition turned = p;
        turned *= m;
        EXPECT_EQ(Classify(volume * m, turned), place);
        EXPECT_EQ(Planes(m.Transpose() * volume), Planes(volume * m));
        in_place = volume;
        in_place *= m;
        EXPECT_EQ(Planes(in_place), Planes(volume * m));
    }
    const GMatrix m = {{{2, 3, 5}, {7, 11, 13}, {17, 19, 23}}};
    const GClipVolume mapped = Of(kBox) * m;
    EXPECT_EQ(mapped.m_planes[5][2], -23) << "not normalised";
    EXPECT_EQ(mapped.m_planes[5][3], 3) << "offsets stay";
    EXPECT_EQ((m * Of(kBox)).m_planes[1][2], 17);
    EXPECT_EQ(Numbers(ClipVolumeRange(Of(kBox) + GVector{1, 0, -1})),
              (std::vector<double>{1, 0, -1, 2, 2, 2}));
}

TEST(ClipVolume, ScalesAboutItsCentre) {
    EXPECT_EQ(Numbers(ClipVolumeRange(Of({{0, 0, 0}, {2, 2, 2}}) * 2)),
              (std::vector<double>{-1, -1, -1, 3, 3, 3}));
    // Three planes have no vertices to speak of: the mean of the feet (3, 0, 0), (0, 6, 0), (0, 0,
    // 9).
    const double corner[] = {1, 0, 0, -3, 0, 1, 0, -6, 0, 0, 1, -9};
    const GClipVolume scaled = BuildClipVolume(3, corner) * 2;
    EXPECT_DOUBLE_EQ(scaled.m_planes[0][3], -(2 * (3 - 1) + 1.0));
    EXPECT_DOUBLE_EQ(scaled.m_planes[1][3], -(2 * (6 - 2) + 2.0));
    // So do four that meet nowhere.
    const double slab[] = {1, 0, 0, 0, -1, 0, 0, 4, 1, 0, 0, 4, -1, 0, 0, 8};
    const GClipVolume wider = BuildClipVolume(4, slab) * 2;
    EXPECT_DOUBLE_EQ(wider.m_planes[1][3] + wider.m_planes[0][3], 8);

    Random random(46);
    for (int i = 0; i < 1000; ++i) {
        const GClipVolume box_volume = Of(random.ProperBox()) * random.Similarity();
        const double s = random.Uniform(0.2, 3);
        const GBox before = ClipVolumeRange(box_volume);
        const GBox after = ClipVolumeRange(box_volume * s);
        EXPECT_LT(Distance(Interpolate(0.5, before.m_low, before.m_high),
                           Interpolate(0.5, after.m_low, after.m_high)),
                  1e-9);
        EXPECT_NEAR(GDistance(after.m_low, after.m_high),
                    s * GDistance(before.m_low, before.m_high), 1e-9);
        EXPECT_LT(Difference(box_volume * s / s, box_volume), 1e-9);
    }
}

TEST(ClipVolume, ScalingReportsOddFactorsAndCounts) {
    const char* const count = "GClipVolume: can't multiple by scalar when count<=0 or > 6";
    const char* const negative = "GClipVolume: should not multiply by scalar < 0.0";
    const char* const divide = "GClipVolume: scalar < tolerance";
    const char* const divide_in_place = "GClipVolume: trying to divide by number < GSMALLRELTO1";
    MessageRecorder recorder;
    const GClipVolume unit = Of({{-1, -1, -1}, {1, 1, 1}});
    for (const int odd : {0, 7, 255}) {
        const GClipVolume volume = WithCount(unit, static_cast<unsigned char>(odd));
        EXPECT_EQ(Planes(volume * 2), Planes(volume));
        EXPECT_EQ(recorder.Take(), Messages{count});
    }
    EXPECT_EQ((unit * -2).m_planes[2][3], -2);
    EXPECT_EQ(recorder.Take(), Messages{negative});
    const struct {
        double s;
        double by_operator;  // the half width that / gives
        double in_place;     // and /=
        Messages by_operator_messages;
        Messages in_place_messages;
    } rows[] = {
        {4, 0.25, 0.25, {}, {}},
        {DBL_EPSILON, 1 / DBL_EPSILON, 1 / DBL_EPSILON, {}, {}},
        {1e-20, 1e30, 1 / DBL_EPSILON, {divide}, {divide_in_place}},
        {0, 1e30, 1 / DBL_EPSILON, {divide}, {divide_in_place}},
        {-4, -0.25, -0.25, {divide, negative}, {divide_in_place, divide, negative}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ((unit / row.s).m_planes[3][3], row.by_operator);
        EXPECT_EQ(recorder.Take(), row.by_operator_messages);
        GClipVolume in_place = unit;
        in_place /= row.s;
        EXPECT_EQ(in_place.m_planes[3][3], row.in_place);
        EXPECT_EQ(recorder.Take(), row.in_place_messages);
    }
}

TEST(ClipVolume, RangeHoldsWhatTheVolumeHolds) {
    Random random(47);
    for (int i = 0; i < 2000; ++i) {
        const GClipVolume volume = RandomVolume(random);
        const GBox range = ClipVolumeRange(volume);
        if (range.IsNull()) {
            continue;
        }
        const GPosition p = random.Point();
        EXPECT_TRUE(Classify(volume, p) != 1 || range >> p);
    }
    MessageRecorder recorder;
    EXPECT_EQ(ClipVolumeRange(WithCount(Of(kBox), 2)).IsNull(), 1);
    EXPECT_EQ(recorder.Take(), Messages{"GBox: can't build with 0 points"});
    EXPECT_EQ(ClipVolumeRange(WithCount(Of(kBox), 7)).IsNull(), 1);
    EXPECT_EQ(recorder.Take(), Messages{"GBox: can't build with ClipVolume number of planes > 6"});
    EXPECT_EQ(ClipVolumeRange(Of({{1, 1, 1}, {0, 0, 0}})).IsNull(), 1) << "an empty volume";
}

}  // namespace
}  // namespace kvgeom::test
