// SPDX-License-Identifier: MIT

// What is promised of fences whose planes a caller keeps, and what all overlap tests promise.

#include "tests/support/messages.h"

#include <memory>

namespace kvgeom::test {
namespace {

const std::vector<GPosition> kSquare = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}};
const char* const kNoPoints = "GBox: can't build with 0 points";

int Holds(const GPtFence& fence, const GPosition& q) {
    const auto points = std::make_unique<GPosition[]>(fence.m_count + 1);
    const auto normals = std::make_unique<GUnitVector[]>(fence.m_count + 1);
    fence.FindPlanes(points.get(), normals.get());
    int inside = 77;
    long err = 77;
    IsPtInPtFence(fence, points.get(), normals.get(), q, &inside, &err);
    EXPECT_EQ(err, 0);
    return inside;
}

TEST(PtFence, FindsPlanesThatPointInwardsOverItsOwnPoints) {
    for (const double up : {1.0, -1.0}) {
        std::vector<GPosition> room = kSquare;
        room.resize(6);
        GUnitVector normals[6];
        const GPtFence fence = {5, room.data(), {0, 0, up}, 1, -2};
        fence.FindPlanes(room.data(), normals);
        EXPECT_EQ(Numbers(room[0]), (std::vector<double>{0, 0, up}));
        EXPECT_EQ(Numbers(room[2]), Numbers(kSquare[2]));
        EXPECT_EQ(Numbers(room[5]), (std::vector<double>{0, 0, -2 * up}));
        EXPECT_EQ(Numbers(normals[1]), Numbers(kY));
    }
}

TEST(PtFence, HoldsPointsUpToItsPlanesExactly) {
    std::vector<GPosition> points = kSquare;
    const GPtFence fence = {5, points.data(), kZ, 1, -1};
    const std::pair<GPosition, int> rows[] = {
        {{0.5, 0.5, 1}, 1}, {{0.5, 0.5, Up(1)}, 0}, {{0.5, 0.5, -1}, 1},    {{0.5, 0.5, -Up(1)}, 0},
        {{1, 1, 1}, 1},     {{Up(1), 0.5, 0}, 0},   {{-1e-300, 0.5, 0}, 0}, {{0.5, kNaN, 0}, 1}};
    for (const auto& [q, expected] : rows) {
        EXPECT_EQ(Holds(fence, q), expected) << q.m_x << " " << q.m_z;
    }
}

// Its points are asked for no more once the planes are found.
TEST(PtFence, HoldsPointsByPlanesThatOutliveItsPoints) {
    std::vector<GPosition> square = kSquare;
    GPtFence fence = {5, square.data(), kZ, 1, -1};
    GPosition points[6];
    GUnitVector normals[6];
    fence.FindPlanes(points, normals);
    fence.m_points = nullptr;
    for (const auto& [q, expected] : {std::pair(GPosition{0.5, 0.25, 1}, 1), {{0.5, 1.25, 0}, 0}}) {
        int inside = 77;
        long err = 77;
        IsPtInPtFence(fence, points, normals, q, &inside, &err);
        EXPECT_EQ(inside, expected);
    }
}

// 0 proves that they are apart: of a box that shares a point, none is missed.
TEST(OverlapTests, NeverMissABoxThatSharesAPoint) {
    Random random(55);
    int missed = 0;
    int shared = 0;
    const auto check = [&](int meets, bool shares) {
        missed += meets == 0 ? 1 : 0;
        shared += shares ? 1 : 0;
        ASSERT_TRUE(meets == 1 || !shares);
    };
    for (int i = 0; i < 10000; ++i) {
        const GTransf t = random.Similarity();
        const GBox box = random.ProperBox();
        const GPosition p = Sample(random, box);

        GBox sides = random.ProperBox();
        GClipVolume volume;
        ConvertGBoxToGClipVolume(&sides, &volume);
        volume = volume * t;
        int place = 77;
        long err = 77;
        IsPtInClipVolume(volume, p, &place, &err);
        check(volume && box, place != 0);

        std::vector<GPosition> points = kSquare;
        GPtFence fence = {5, points.data(), kZ, 1, -1};
        fence *= ScaleTransf(5) * t;
        check(fence && box, Holds(fence, p) == 1);

        const GBoreLine l = random.BoreLine();
        check(l && box, (box >> Sample(random, l, 1 - 1e-9)) == 1);
    }
    EXPECT_GT(missed, 3000) << "tests that always answer 1 would pass";
    EXPECT_GT(shared, 1000);
}

TEST(ProfileVolumes, OfTooFewPointsHaveNoPlanesAndOfNoneANullRange) {
    const GBox far = BuildBox(100, 100, 100, 101, 101, 101);
    MessageRecorder recorder;
    for (const unsigned long count : {0U, 1U, 2U, 5U}) {
        // Without an array, or with one of as many points as there are, for the sanitizer to watch.
        std::vector<GPosition> points(kSquare.begin(), kSquare.begin() + static_cast<long>(count));
        GPosition* const array = count == 0 ? nullptr : points.data();
        const GPtFence fence = {count == 0 ? 5 : count, array, kZ, 1, -1};
        EXPECT_EQ(fence && far, count < 3 ? 1 : 0) << count;
        EXPECT_EQ(Holds(fence, {-100, -100, 100}), count < 3 ? 1 : 0) << count;
        PtFrustumRange({fence, {0, 0, -9}});
        RtPrismRange({ScaleTransf(1), array, count, 1});
        EXPECT_EQ(PtFenceRange(fence).IsNull(), count == 0 ? 1 : 0);
        EXPECT_EQ(recorder.Take(), Messages(count == 0 ? 3 : 0, kNoPoints));
    }
}

TEST(RtPrism, IsBuiltInPlaceWithItsPointsInThePlane) {
    std::vector<GPosition> points = kSquare;
    points[2].m_z = 0.125;  // off the plane
    GRtPrism prism = {{}, points.data(), 0, 0};
    long err = 77;
    BuildRtPrism(points.data(), 5, kZ, 2, -1, prism, &err);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(Numbers(prism.m_transf.m_translation), (std::vector<double>{0, 0, -1}));
    EXPECT_EQ(Numbers(points[1]), Numbers(kSquare[1]));
    EXPECT_EQ(Numbers(points[2]), Numbers(kSquare[2]));
}

TEST(RtPrism, WithoutRoomForPointsIsBuiltAllTheSame) {
    std::vector<GPosition> points = kSquare;
    GRtPrism with_points = {{}, points.data(), 0, 0};
    GRtPrism without = {{}, nullptr, 0, 0};
    const GVector slanted = {0.25, -0.5, 2};
    for (const bool has_frame : {false, true}) {
        for (GRtPrism* prism : {&with_points, &without}) {
            long err = 77;
            if (has_frame) {
                BuildRtPrism(TranslateTransf(slanted), kSquare.data(), 5, 3, *prism, &err);
            } else {
                BuildRtPrism(kSquare.data(), 5, kZ, 2, -1, *prism, &err);
            }
            EXPECT_EQ(err, 0);
        }
        EXPECT_EQ(Bits(without.m_transf), Bits(with_points.m_transf));
        EXPECT_EQ(without.m_count, 5U);
        EXPECT_EQ(without.m_height, 3);
        EXPECT_EQ(without.m_points, nullptr);
    }
}

}  // namespace
}  // namespace kvgeom::test
