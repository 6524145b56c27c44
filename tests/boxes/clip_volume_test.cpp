// SPDX-License-Identifier: MIT

// What is promised of clip volumes at their edges.

#include "tests/support/messages.h"

#include <tuple>

namespace kvgeom::test {
namespace {

constexpr double kTol = 1e-6;

GClipVolume Of(GBox box) {
    GClipVolume volume;
    EXPECT_EQ(ConvertGBoxToGClipVolume(&box, &volume), 0);
    return volume;
}

GClipVolume WithCount(GClipVolume volume, unsigned char count) {
    volume.m_count = count;
    return volume;
}

TEST(ClipVolume, IsBuiltFromAtMostSixPlanes) {
    const std::vector<double> values(7 * 4, 1.0);
    const std::vector<GPosition> points(300, {1, 2, 3});
    const std::vector<GUnitVector> normals(300, {0, 2, 0});
    const Messages message = {"GClipVolume: can't build more than 6 planes"};
    MessageRecorder recorder;
    recorder.Expect(BuildClipVolume(7, values.data()).m_count, {6}, message);
    const GClipVolume clamped = BuildClipVolume(300, points.data(), normals.data());
    recorder.Expect(clamped.m_count, {6}, message);
    recorder.Expect(clamped.m_planes[5][1], {2});  // normals are used as they are
    // A plane without a normal, or with one too short to square, stays as it is.
    const double degenerate[] = {0, 0, 0, 5, 1e-200, 0, 0, 7};
    const GClipVolume unchanged = BuildClipVolume(2, degenerate);
    EXPECT_TRUE(std::equal(degenerate, degenerate + 8, unchanged.m_planes[0]));
}

TEST(ClipVolume, TellsInsideBoundaryAndOutside) {
    const GClipVolume volume = Of({{0, 0, 0}, {1, 2, 3}});
    GClipVolume doubled = WithCount(volume, 1);
    const double plane[] = {2, 0, 0, 2};
    std::copy_n(plane, 4, doubled.m_planes[0]);
    const std::tuple<GClipVolume, GPosition, int> rows[] = {
        {volume, {0.5, -kTol, 1.5}, 2},
        {volume, {0.5, -Up(kTol), 1.5}, 0},
        {volume, {0.5, kTol, 1.5}, 2},
        {volume, {0.5, Up(kTol), 1.5}, 1},
        {volume, {0, 1, 5}, 0},  // on the boundary of one plane, outside of a later one
        {WithCount(volume, 255), {0.5, 1, 1.5}, 1},  // never more planes than there are
        // A distance of 1e-6 is not to be had by long normals.
        {BuildClipVolume(1, plane), {-1 - 0.9 * kTol, 0, 0}, 2},
        {doubled, {-1 - 0.9 * kTol, 0, 0}, 2},
    };
    for (const auto& [in, p, expected] : rows) {
        int result = 77;
        long err = 77;
        IsPtInClipVolume(in, p, &result, &err);
        EXPECT_EQ(result, expected) << p.m_x << " " << p.m_y;
        EXPECT_EQ(err, 0);
    }
}

TEST(ClipVolume, MeetsAndHoldsBoxesWithinTheTolerance) {
    const GClipVolume unit = Of({{0, 0, 0}, {1, 1, 1}});
    const std::tuple<GBox, int, int> rows[] = {{{{0, 0, 0}, {1, 1, 1}}, 1, 1},
                                               {{{-kTol, 0, 0}, {1, 1, 1 + 0.9 * kTol}}, 1, 1},
                                               {{{0, -Up(kTol), 0}, {1, 1, 1}}, 1, 0},
                                               {{{-1, -1, -1}, {1, 1, -kTol}}, 1, 0},
                                               {{{-1, -1, -1}, {1, 1, -Up(kTol)}}, 0, 0}};
    for (const auto& [box, meets, holds] : rows) {
        EXPECT_EQ(unit && box, meets) << box.m_low.m_x << " " << box.m_high.m_z;
        EXPECT_EQ(unit >> box, holds) << box.m_low.m_x << " " << box.m_high.m_z;
    }
    const GBox beside = {{-1, -1, -1}, {1, 1, -1}};
    EXPECT_EQ(WithCount(unit, 0) && beside, 1);
}

TEST(ClipVolume, WithoutAVertexScalesAboutTheMeanOfItsFeet) {
    // Three planes count as none: the feet are (3, 0, 0), (0, 6, 0), (0, 0, 9).
    const double corner[] = {1, 0, 0, -3, 0, 1, 0, -6, 0, 0, 1, -9};
    const GClipVolume scaled = BuildClipVolume(3, corner) * 2;
    EXPECT_DOUBLE_EQ(scaled.m_planes[0][3], -(2 * (3 - 1) + 1.0));
    // So do four that meet nowhere.
    const double slab[] = {1, 0, 0, 0, -1, 0, 0, 4, 1, 0, 0, 4, -1, 0, 0, 8};
    const GClipVolume wider = BuildClipVolume(4, slab) * 2;
    EXPECT_DOUBLE_EQ(wider.m_planes[1][3] + wider.m_planes[0][3], 8);
}

TEST(ClipVolume, WithoutAVertexHasANullRange) {
    const Messages no_points = {"GBox: can't build with 0 points"};
    const Messages too_many = {"GBox: can't build with ClipVolume number of planes > 6"};
    const GClipVolume unit = Of({{0, 0, 0}, {1, 1, 1}});
    MessageRecorder recorder;
    recorder.Expect(ClipVolumeRange(WithCount(unit, 2)).IsNull(), {1}, no_points);
    recorder.Expect(ClipVolumeRange(WithCount(unit, 7)).IsNull(), {1}, too_many);
    recorder.Expect(ClipVolumeRange(Of({{1, 1, 1}, {0, 0, 0}})).IsNull(), {1}, no_points);
}

}  // namespace
}  // namespace kvgeom::test
