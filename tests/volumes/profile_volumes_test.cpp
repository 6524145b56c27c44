// SPDX-License-Identifier: MIT

// What is promised of fences, frusta, prisms and bore cones at their edges, and what all overlap
// tests promise.

#include "tests/support/messages.h"

#include <memory>
#include <tuple>

namespace kvgeom::test {
namespace {

constexpr double kTol = 1e-6;
const std::vector<GPosition> kSquare = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}};
constexpr GPosition kSevens = {7, 7, 7};
const char* const kNoPoints = "GBox: can't build with 0 points";
// No similarity, which makes it convert to nothing.
constexpr G4x4 kPerspective = {{1, 0, 0, 0.5, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};

std::vector<GPosition> SquareEndingAt(double x) {
    std::vector<GPosition> points = kSquare;
    points.back().m_x = x;
    return points;
}

int Holds(const GPtFence& fence, const GPosition& q) {
    const std::unique_ptr<GPosition[]> points(new GPosition[fence.m_count + 1]);
    const std::unique_ptr<GUnitVector[]> normals(new GUnitVector[fence.m_count + 1]);
    fence.FindPlanes(points.get(), normals.get());
    int inside = 77;
    long err = 77;
    IsPtInPtFence(fence, points.get(), normals.get(), q, &inside, &err);
    EXPECT_EQ(err, 0);
    return inside;
}

TEST(PtFence, IsBuiltWhenItIsClosedAndOrderedAndElseUntouched) {
    const Messages few = {"BuildPtFence: num < 4"};
    const Messages open = {"BuildPtFence: pts aren't closed"};
    const Messages order = {"BuildPtFence: front < back"};
    const std::tuple<std::vector<GPosition>, double, Messages> rows[] = {
        {kSquare, 1, {}},
        {SquareEndingAt(kTol), 1, {}},
        {SquareEndingAt(Up(kTol)), 1, open},
        {{{0, 0, 0}, {1, 0, 0}, {0, 0, 0}}, 1, few},
        {{}, 2, few},
        {kSquare, Up(1), order},
        {SquareEndingAt(1), 2, open}};
    MessageRecorder recorder;
    for (const auto& [points, back, messages] : rows) {
        std::vector<GPosition> room(5, kSevens);
        GPtFence fence = {77, room.data(), kX, 77, 77};
        long err = 77;
        BuildPtFence(Count(points), points.data(), kY, 1, back, fence, &err);
        const bool built = messages.empty();
        EXPECT_EQ(recorder.Take(), messages);
        EXPECT_EQ(err, built ? 0 : 2);
        EXPECT_EQ(fence.m_count, built ? 5U : 77U);
        EXPECT_EQ(fence.m_back, built ? back : 77);
        EXPECT_EQ(Numbers(room[0]), Numbers(built ? points[0] : kSevens));
    }
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

TEST(PtFence, HoldsPointsUpToItsPlanesExactlyAndMeetsBoxesWithinTheTolerance) {
    std::vector<GPosition> points = kSquare;
    const GPtFence fence = {5, points.data(), kZ, 1, -1};
    const std::pair<GPosition, int> rows[] = {
        {{0.5, 0.5, 1}, 1}, {{0.5, 0.5, Up(1)}, 0}, {{0.5, 0.5, -1}, 1},    {{0.5, 0.5, -Up(1)}, 0},
        {{1, 1, 1}, 1},     {{Up(1), 0.5, 0}, 0},   {{-1e-300, 0.5, 0}, 0}, {{0.5, kNaN, 0}, 1}};
    for (const auto& [q, expected] : rows) {
        EXPECT_EQ(Holds(fence, q), expected) << q.m_x << " " << q.m_z;
    }
    EXPECT_EQ(fence && BuildBox(0, -1, 0, 1, -kTol, 1), 1);
    EXPECT_EQ(fence && BuildBox(0, -1, 0, 1, -Up(kTol), 1), 0);
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

TEST(ProfileVolumes, CollapseUnderMatricesThatDoNotConvert) {
    std::vector<GPosition> points = kSquare;
    GPtFrustum frustum = {{5, points.data(), kZ, 1, -1}, {2, 4, 6}};
    GRtPrism prism = {ScaleTransf(2), points.data(), 5, 2};
    GBoreCone cone = {{{1, 2, 3}, kZ, 2, 1, 1}, {0, 0, -1}};
    MessageRecorder recorder;
    prism *= kPerspective;
    recorder.Expect(prism.m_transf.IsNull(), {1});
    recorder.Expect(points[2], {1, 1, 0});  // a prism's points stay
    cone *= kPerspective;
    recorder.Expect(cone, std::vector<double>(12, 0.0), {kNullUnitVector});
    frustum *= kPerspective;
    recorder.Expect(points[2], {0, 0, 0}, {kNullUnitVector});
    EXPECT_EQ(Numbers(frustum.m_eye), (std::vector<double>{1, 2, 3})) << "goes by the matrix";
}

TEST(PtFrustum, CopiesItsFenceAndHasAllSpaceAroundRaysParallelToThePlanes) {
    const std::vector<double> all_space = {-kBig, -kBig, -kBig, kBig, kBig, kBig};
    std::vector<GPosition> points = kSquare;
    std::vector<GPosition> room(5);
    GPtFrustum frustum = {{77, room.data(), kX, 77, 77}, {}};
    long err = 77;
    BuildPtFrustum({5, points.data(), kZ, 1, -1}, {5, 5, 0}, frustum, &err);
    EXPECT_EQ(err, 77) << "is left alone";
    EXPECT_EQ(frustum.m_fence.m_points, room.data());
    EXPECT_EQ(Numbers(room[2]), Numbers(kSquare[2]));
    MessageRecorder recorder;
    recorder.Expect(PtFrustumRange(frustum), all_space);
    frustum.m_eye = kSquare[0];
    recorder.Expect(PtFrustumRange(frustum), all_space, {kNullUnitVector});
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

TEST(RtPrism, RefusesWhatMakesNoFrameOrIsOpen) {
    const Messages invalid = {"BuildRtPrism: normal is invalid"};
    const Messages open = {"BuildRtPrism: pts aren't closed"};
    const Messages order = {"BuildRtPrism: f_depth < b_depth"};
    const Messages negative = {"BuildRtPrism: height is negative"};
    const Messages same = {kNullUnitVector, "BuildRtPrism: pts[0] and pts[1] are the same\n"};
    std::vector<GPosition> doubled = kSquare;
    doubled[1] = doubled[0];
    const struct {
        std::vector<GPosition> points;
        double normal;  // along z
        double f_depth;
        Messages messages;
        Messages of_own_frame;  // with f_depth - 1 for the height
    } rows[] = {{kSquare, 1, 1, {}, {}},
                {SquareEndingAt(kTol), kTol, 1, {}, {}},
                {SquareEndingAt(Up(kTol)), Down(kTol), 0, invalid, open},
                {SquareEndingAt(Up(kTol)), 1, 0, open, open},
                {doubled, 1, Down(1), order, negative},
                {doubled, 1, 1, same, {}},
                {{{1, 2, 3}}, 1, 1, same, {}},
                {{}, 1, 1, open, open}};
    MessageRecorder recorder;
    for (const auto& row : rows) {
        std::vector<GPosition> room(6, kSevens);
        GRtPrism prism = {ScaleTransf(77), room.data(), 77, 77};
        const auto check = [&](const Messages& messages, long err) {
            recorder.Expect(prism.m_transf.m_scaling, {messages.empty() ? 1.0 : 77.0}, messages);
            EXPECT_EQ(prism.m_count, messages.empty() ? row.points.size() : 77U);
            EXPECT_EQ(err, messages.empty() ? 0 : 2);
            // The points are moved before the edge is tested.
            EXPECT_EQ(room[0].m_z != 7, messages.empty() || messages == same);
        };
        const GPosition* const points = row.points.data();
        long err = 77;
        BuildRtPrism(points, Count(row.points), {0, 0, row.normal}, row.f_depth, 1, prism, &err);
        check(row.messages, err);
        room[0] = kSevens;
        prism = {ScaleTransf(77), room.data(), 77, 77};
        err = 77;
        BuildRtPrism(ScaleTransf(1), points, Count(row.points), row.f_depth - 1, prism, &err);
        check(row.of_own_frame, err);
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

}  // namespace
}  // namespace kvgeom::test
