// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <memory>

namespace kvgeom::test {
namespace {

const std::vector<GPosition> kSquare = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}};
constexpr const char* kNoPoints = "GBox: can't build with 0 points";

// A fence with an array of its own, of exactly the points it has.
struct OwnedFence {
    std::unique_ptr<GPosition[]> points;
    GPtFence fence;

    explicit OwnedFence(unsigned long count)
        : points(new GPosition[count]), fence{count, points.get(), {0, 0, 1}, 1, -1} {}

    OwnedFence(const std::vector<GPosition>& profile, const GUnitVector& direction, double front,
               double back)
        : OwnedFence(Count(profile)) {
        std::copy(profile.begin(), profile.end(), points.get());
        fence.m_direction = direction;
        fence.m_front = front;
        fence.m_back = back;
    }
};

// A regular polygon of count - 1 corners around the centre, in the plane perpendicular to the
// direction, closed.
std::vector<GPosition> Polygon(unsigned long count, const GPosition& centre, const GUnitVector& d,
                               double radius, bool clockwise) {
    const GVector u = GetPerpVector(d);
    const GVector w = d * u;
    std::vector<GPosition> points;
    for (unsigned long i = 0; i + 1 < count; ++i) {
        const double angle =
            (clockwise ? -2 : 2) * kPi * static_cast<double>(i) / static_cast<double>(count - 1);
        points.push_back(centre + radius * std::cos(angle) * u + radius * std::sin(angle) * w);
    }
    points.push_back(points[0]);
    return points;
}

OwnedFence RandomFence(Random& random, unsigned long count) {
    const GUnitVector d = random.Direction();
    const double back = random.Uniform(-5, 2);
    return {Polygon(count, random.Point(), d, random.Uniform(0.5, 6), random.Next() % 2 == 0), d,
            back + random.Uniform(0, 5), back};
}

struct Planes {
    std::unique_ptr<GPosition[]> points;
    std::unique_ptr<GUnitVector[]> normals;

    explicit Planes(const GPtFence& fence)
        : points(new GPosition[fence.m_count + 1]), normals(new GUnitVector[fence.m_count + 1]) {
        fence.FindPlanes(points.get(), normals.get());
    }

    int Holds(const GPtFence& fence, const GPosition& q) const {
        int inside = 77;
        long err = 77;
        IsPtInPtFence(fence, points.get(), normals.get(), q, &inside, &err);
        EXPECT_EQ(err, 0);
        return inside;
    }
};

TEST(PtFence, IsBuiltWhenItIsClosedAndOrdered) {
    const char* const few = "BuildPtFence: num < 4";
    const char* const open = "BuildPtFence: pts aren't closed";
    const char* const order = "BuildPtFence: front < back";
    const auto ending_at = [](double x) {
        std::vector<GPosition> points = kSquare;
        points.back().m_x = x;
        return points;
    };
    const std::vector<GPosition> triangle = {{0, 0, 0}, {1, 0, 0}, {0, 0, 0}};
    const struct {
        std::vector<GPosition> points;
        double front;
        double back;
        const char* message;
    } rows[] = {
        {kSquare, 1, -1, nullptr},
        {kSquare, 1, 1, nullptr},
        {ending_at(1e-6), 1, -1, nullptr},
        {ending_at(Up(1e-6)), 1, -1, open},
        {triangle, 1, -1, few},
        {{}, 1, -1, few},
        {kSquare, 1, Up(1), order},
        {ending_at(1), 1, 2, open},
    };
    MessageRecorder recorder;
    for (const auto& row : rows) {
        OwnedFence owned(5);
        owned.points[0] = {7, 7, 7};
        GPtFence& fence = owned.fence;
        long err = 77;
        BuildPtFence(Count(row.points), row.points.data(), {1, 2, 3}, row.front, row.back, fence,
                     &err);
        EXPECT_EQ(recorder.Take(), row.message ? Messages{row.message} : Messages{});
        EXPECT_EQ(err, row.message ? 2 : 0);
        EXPECT_EQ(fence.m_points, owned.points.get());
        EXPECT_EQ(Numbers(fence.m_points[0]),
                  Numbers(row.message ? GPosition{7, 7, 7} : row.points[0]));
        EXPECT_EQ(Numbers(fence.m_direction), Numbers(row.message ? kZ : GUnitVector{1, 2, 3}));
        EXPECT_EQ(fence.m_back, row.message ? -1 : row.back);
    }
    // The points may be the fence's own.
    OwnedFence owned(kSquare, kZ, 1, -1);
    long err = 77;
    BuildPtFence(5, owned.points.get(), kX, 2, 0, owned.fence, &err);
    EXPECT_EQ(Numbers(owned.points[2]), Numbers(kSquare[2]));
}

TEST(PtFence, FindsPlanesThatPointInwardsWhicheverWayItTurns) {
    const std::vector<GPosition> reversed(kSquare.rbegin(), kSquare.rend());
    const OwnedFence owned(kSquare, kZ, 1, -2);
    const Planes planes(owned.fence);
    const std::vector<std::pair<GPosition, GUnitVector>> expected = {
        {{0, 0, 1}, {0, 0, -1}}, {{1, 0, 0}, {0, 1, 0}}, {{1, 1, 0}, {-1, 0, 0}},
        {{0, 1, 0}, {0, -1, 0}}, {{0, 0, 0}, {1, 0, 0}}, {{0, 0, -2}, {0, 0, 1}}};
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(Numbers(planes.points[i]), Numbers(expected[i].first)) << i;
        EXPECT_EQ(Numbers(planes.normals[i]), Numbers(expected[i].second)) << i;
    }
    const OwnedFence backwards(reversed, kZ, 1, -2);
    EXPECT_EQ(Numbers(Planes(backwards.fence).normals[1]), Numbers(kX));
    const OwnedFence upside_down(kSquare, {0, 0, -1}, 1, -2);
    EXPECT_EQ(Numbers(Planes(upside_down.fence).normals[1]), Numbers(kY));
    // The points of the planes may go over those of the fence.
    GPosition room[6];
    GUnitVector normals[6];
    std::copy(kSquare.begin(), kSquare.end(), room);
    const GPtFence overlaid = {5, room, kZ, 1, -2};
    overlaid.FindPlanes(room, normals);
    for (size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(Numbers(room[i]), Numbers(planes.points[i])) << i;
        EXPECT_EQ(Numbers(normals[i]), Numbers(planes.normals[i])) << i;
    }
}

TEST(PtFence, HoldsPointsUpToItsPlanesExactly) {
    for (const bool clockwise : {false, true}) {
        const std::vector<GPosition> profile =
            clockwise ? std::vector<GPosition>(kSquare.rbegin(), kSquare.rend()) : kSquare;
        const OwnedFence owned(profile, kZ, 1, -1);
        const Planes planes(owned.fence);
        const struct {
            GPosition q;
            int expected;
        } rows[] = {{{0.5, 0.5, 0}, 1},   {{0.5, 0.5, 1}, 1},      {{0.5, 0.5, Up(1)}, 0},
                    {{0.5, 0.5, -1}, 1},  {{0.5, 0.5, -Up(1)}, 0}, {{1, 1, 1}, 1},
                    {{Up(1), 0.5, 0}, 0}, {{-1e-300, 0.5, 0}, 0},  {{1.5, 0.5, 0}, 0},
                    {{0.5, kNaN, 0}, 1}};
        for (const auto& row : rows) {
            EXPECT_EQ(planes.Holds(owned.fence, row.q), row.expected) << row.q.m_x << row.q.m_z;
        }
    }
}

TEST(PtFence, MeetsBoxesWithinTheTolerance) {
    const OwnedFence owned(kSquare, kZ, 1, -1);
    const struct {
        GBox box;
        int expected;
    } rows[] = {
        {{{2, 2, 2}, {3, 3, 3}}, 0},
        {{{0.5, 0.5, 0.5}, {3, 3, 3}}, 1},
        {{{1 + 5e-7, 0.2, 0.2}, {2, 0.8, 0.8}}, 1},
        {{{1 + 2e-6, 0.2, 0.2}, {2, 0.8, 0.8}}, 0},
        {{{0, 0, 1 + 5e-7}, {1, 1, 2}}, 1},
        {{{0, 0, 1 + 2e-6}, {1, 1, 2}}, 0},
        {{{0, 0, -2}, {1, 1, -1 - 2e-6}}, 0},
        {{{-5, -5, -5}, {5, 5, 5}}, 1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(owned.fence && row.box, row.expected) << row.box.m_low.m_x;
    }
}

TEST(PtFence, NeverMissesABoxThatItShares) {
    Random random(55);
    int missed = 0;
    int shared = 0;
    for (int i = 0; i < 10000; ++i) {
        const OwnedFence owned = RandomFence(random, 4 + random.Below(12));
        const Planes planes(owned.fence);
        const GBox box = random.ProperBox();
        const int meets = owned.fence && box;
        missed += meets ? 0 : 1;
        for (int k = 0; k < 4; ++k) {
            if (planes.Holds(owned.fence, Sample(random, box))) {
                EXPECT_EQ(meets, 1);
                ++shared;
            }
        }
    }
    EXPECT_GT(missed, 1000);
    EXPECT_GT(shared, 200);
}

TEST(PtFence, RangeHoldsItAndTouchesItOnAllSides) {
    Random random(56);
    for (int i = 0; i < 3000; ++i) {
        const OwnedFence owned = RandomFence(random, 4 + random.Below(12));
        const GPtFence& fence = owned.fence;
        const GBox range = PtFenceRange(fence);
        GBox touched = BuildBox(fence.m_points[0] + fence.m_front * fence.m_direction);
        for (unsigned long k = 0; k < fence.m_count; ++k) {
            for (const double limit : {fence.m_front, fence.m_back}) {
                touched |= BuildBox(fence.m_points[k] + limit * fence.m_direction);
            }
        }
        EXPECT_EQ(Numbers(range), Numbers(touched));
    }
    EXPECT_EQ(Numbers(PtFenceRange(OwnedFence(kSquare, kZ, 1, -1).fence)),
              (std::vector<double>{0, 0, -1, 1, 1, 1}));
}

TEST(PtFence, MapsWithItsPoints) {
    Random random(57);
    for (int i = 0; i < 2000; ++i) {
        const OwnedFence owned = RandomFence(random, 4 + random.Below(8));
        OwnedFence mapped({owned.points.get(), owned.points.get() + owned.fence.m_count},
                          owned.fence.m_direction, owned.fence.m_front, owned.fence.m_back);
        const GTransf t = random.Similarity();
        mapped.fence *= t;
        EXPECT_EQ(mapped.fence.m_front, owned.fence.m_front * t.m_scaling);
        EXPECT_EQ(Bits(mapped.points[2]), Bits(owned.points[2] * t));
        const Planes planes(owned.fence);
        const Planes images(mapped.fence);
        const GPosition p = random.Point();
        double nearest = kInf;
        for (unsigned long k = 0; k <= owned.fence.m_count; ++k) {
            nearest = std::min(nearest, std::fabs(planes.normals[k] % (p - planes.points[k])));
        }
        if (nearest > 1e-9) {
            EXPECT_EQ(images.Holds(mapped.fence, p * t), planes.Holds(owned.fence, p));
        }
        // A matrix maps by the transformation it converts to.
        OwnedFence by_matrix({owned.points.get(), owned.points.get() + owned.fence.m_count},
                             owned.fence.m_direction, owned.fence.m_front, owned.fence.m_back);
        G4x4 a;
        a = t;
        by_matrix.fence *= a;
        EXPECT_LT(Distance(by_matrix.points[1], mapped.points[1]), 1e-12);
    }
    // One that doesn't convert collapses it.
    MessageRecorder recorder;
    OwnedFence collapsed(kSquare, kZ, 1, -1);
    GPtFrustum frustum = {collapsed.fence, {2, 4, 6}};
    frustum *= G4x4{{1, 0, 0, 0.5, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    EXPECT_EQ(recorder.Take(), Messages{kNullUnitVector});
    EXPECT_EQ(Numbers(collapsed.points[2]), Numbers(GPosition{0, 0, 0}));
    EXPECT_EQ(frustum.m_fence.m_front, 0);
    EXPECT_EQ(Numbers(frustum.m_eye), Numbers(GPosition{1, 2, 3})) << "the eye goes by the matrix";
}

TEST(PtFrustum, CopiesItsFenceAndLeavesTheErrorCode) {
    const OwnedFence source(kSquare, kZ, 1, -1);
    OwnedFence target(5);
    GPtFrustum frustum = {target.fence, {0, 0, 0}};
    long err = 77;
    BuildPtFrustum(source.fence, {1, 2, 3}, frustum, &err);
    EXPECT_EQ(err, 77);
    EXPECT_EQ(frustum.m_fence.m_points, target.points.get());
    EXPECT_EQ(Numbers(target.points[2]), Numbers(kSquare[2]));
    EXPECT_EQ(Numbers(frustum.m_eye), Numbers(GPosition{1, 2, 3}));
    const GTransf t = BuildTransf(Rotation(0.0, 1.0, kX), {1, 0, 0}, 2, 1, 0, 0);
    frustum *= t;
    EXPECT_EQ(Numbers(frustum.m_eye), Numbers(GPosition{3, -6, 4}));
    EXPECT_EQ(Numbers(target.points[2]), Numbers(GPosition{3, 0, 2}));
    EXPECT_EQ(frustum.m_fence.m_back, -2);
}

TEST(PtFrustum, RangeHoldsTheRaysBetweenThePlanes) {
    OwnedFence square(kSquare, kZ, 1, -1);
    EXPECT_LT(Distance(PtFrustumRange({square.fence, {0.5, 0.5, -3}}),
                       {{-1 / 6.0, -1 / 6.0, -1}, {7 / 6.0, 7 / 6.0, 1}}),
              1e-15);
    Random random(58);
    for (int i = 0; i < 3000; ++i) {
        const OwnedFence owned = RandomFence(random, 4 + random.Below(8));
        const GPtFence& fence = owned.fence;
        const GPosition eye = fence.m_points[0] +
                              (fence.m_back - random.Uniform(0.5, 9)) * fence.m_direction +
                              3.0 * GetPerpVector(fence.m_direction);
        if ((fence.m_points[0] - eye) % fence.m_direction < 0.5) {
            continue;  // the rays would be near parallel to the planes
        }
        const GBox range = PtFrustumRange({fence, eye});
        // A point of the frustum: on the ray through a point of the polygon, between the planes.
        const unsigned long k = random.Below(fence.m_count - 1);
        const GPosition on_edge =
            Interpolate(random.Uniform(0, 1), fence.m_points[k], fence.m_points[k + 1]);
        const double depth = (on_edge - eye) % fence.m_direction;
        const double at = depth + random.Uniform(fence.m_back, fence.m_front);
        EXPECT_EQ(range >> Interpolate(at / depth, eye, on_edge), 1);
    }
    MessageRecorder recorder;
    const std::vector<double> all_space = {-kBig, -kBig, -kBig, kBig, kBig, kBig};
    EXPECT_EQ(Numbers(PtFrustumRange({square.fence, {5, 5, 0}})), all_space) << "parallel rays";
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(Numbers(PtFrustumRange({square.fence, {1, 0, 0}})), all_space)
        << "the eye at a point";
    EXPECT_EQ(Numbers(PtFrustumRange({square.fence, {0, 0, 0}})), all_space);
    EXPECT_EQ(recorder.Take(), Messages{kNullUnitVector});
}

TEST(ProfileVolumes, ReadNothingBeyondTheirCounts) {
    Random random(59);
    MessageRecorder recorder;
    for (unsigned long count = 0; count <= 150; ++count) {
        OwnedFence owned(count);
        for (unsigned long i = 0; i < count; ++i) {
            owned.points[i] = random.Point();
        }
        if (count > 0) {
            owned.points[count - 1] = owned.points[0];
        }
        const Planes planes(owned.fence);
        const int meets = owned.fence && BuildBox(100, 100, 100, 101, 101, 101);
        EXPECT_EQ(meets, count < 3 ? 1 : 0) << count;
        if (count < 3) {
            EXPECT_EQ(planes.Holds(owned.fence, {100, 0, 0}), 1) << "no planes";
        }
        recorder.Take();
        const GBox range = PtFenceRange(owned.fence);
        EXPECT_EQ(range.IsNull(), count == 0 ? 1 : 0);
        EXPECT_EQ(recorder.Take(), count == 0 ? Messages{kNoPoints} : Messages{});
        PtFrustumRange({owned.fence, {0, 0, -50}});
        EXPECT_EQ(recorder.Take(), count == 0 ? Messages{kNoPoints} : Messages{});
        owned.fence *= ScaleTransf(2);

        const std::unique_ptr<GPosition[]> room(new GPosition[count]);
        GRtPrism prism = {{}, room.get(), 0, 0};
        long err = 77;
        BuildRtPrism(owned.points.get(), count, kZ, 2, 1, prism, &err);
        EXPECT_EQ(err, count < 3 ? 2 : 0) << count << ": two points of a closed profile coincide";
        err = 77;
        BuildRtPrism(TranslateTransf({1, 2, 3}), owned.points.get(), count, 2, prism, &err);
        EXPECT_EQ(err, count == 0 ? 2 : 0) << count;
        recorder.Take();
        EXPECT_EQ(RtPrismRange(prism).IsNull(), count == 0 ? 1 : 0);
        EXPECT_EQ(recorder.Take(), count == 0 ? Messages{kNoPoints} : Messages{});
    }
    const GPtFence without_array = {5, nullptr, kZ, 1, -1};
    EXPECT_EQ(without_array && BuildBox(0, 0, 0, 1, 1, 1), 1);
    EXPECT_EQ(PtFenceRange(without_array).IsNull(), 1);
}

TEST(RtPrism, IsBuiltFromPointsOfItsOwnFrame) {
    std::vector<GPosition> room(5);
    std::vector<GPosition> open = kSquare;
    open.back().m_y = 2e-6;
    const struct {
        const std::vector<GPosition>& points;
        double height;
        const char* message;
    } rows[] = {{kSquare, 0, nullptr},
                {kSquare, -1e-300, "BuildRtPrism: height is negative"},
                {open, -1, "BuildRtPrism: pts aren't closed"}};
    MessageRecorder recorder;
    for (const auto& row : rows) {
        GRtPrism prism = {{}, room.data(), 77, 77};
        room[2] = {7, 7, 7};
        long err = 77;
        BuildRtPrism(ScaleTransf(3), row.points.data(), 5, row.height, prism, &err);
        EXPECT_EQ(err, row.message ? 2 : 0);
        EXPECT_EQ(recorder.Take(), row.message ? Messages{row.message} : Messages{});
        EXPECT_EQ(prism.m_count, row.message ? 77U : 5U);
        EXPECT_EQ(Numbers(room[2]), Numbers(row.message ? GPosition{7, 7, 7} : kSquare[2]));
    }
}

TEST(RtPrism, IsBuiltFromPointsOfTheWorld) {
    const struct {
        double f_depth;
        double b_depth;
        GBox range;
    } rows[] = {{2, -1, {{0, 0, -1}, {1, 1, 2}}},
                {2, 1, {{0, 0, 1}, {1, 1, 2}}},
                {2, 2, {{0, 0, 2}, {1, 1, 2}}}};
    for (const auto& row : rows) {
        std::vector<GPosition> points = kSquare;
        points[2].m_z = 0.125;  // off the plane
        GRtPrism prism = {{}, points.data(), 0, 0};
        long err = 77;
        BuildRtPrism(points.data(), 5, kZ, row.f_depth, row.b_depth, prism, &err);  // in place
        EXPECT_EQ(err, 0);
        EXPECT_EQ(Numbers(prism.m_transf),
                  Numbers(BuildTransf(kIdentity, {0, 0, row.b_depth}, 1, 1, 0, 0)));
        EXPECT_EQ(prism.m_height, row.f_depth - row.b_depth);
        for (size_t i = 0; i < 5; ++i) {
            EXPECT_EQ(Numbers(points[i]), Numbers(kSquare[i])) << i;
        }
        EXPECT_EQ(Numbers(RtPrismRange(prism)), Numbers(row.range));
    }
    Random random(60);
    for (int i = 0; i < 2000; ++i) {
        const GUnitVector normal = random.Direction();
        const std::vector<GPosition> profile =
            Polygon(4 + random.Next() % 8, random.Point(), normal, 3, random.Next() % 2 == 0);
        std::vector<GPosition> room(profile.size());
        GRtPrism prism = {{}, room.data(), 0, 0};
        const double back = random.Uniform(-3, 3);
        const double front = back + random.Uniform(0, 3);
        long err = 77;
        BuildRtPrism(profile.data(), Count(profile), normal, front, back, prism, &err);
        const GTransf t = random.Similarity();
        prism *= t;
        // Each local corner is the world's, moved along the normal.
        const size_t k = random.Below(profile.size());
        const GPosition top = {room[k].m_x, room[k].m_y, prism.m_height};
        EXPECT_LT(Distance(room[k] * prism.m_transf, (profile[k] + back * normal) * t), 1e-11);
        EXPECT_LT(Distance(top * prism.m_transf, (profile[k] + front * normal) * t), 1e-11);
        const GBox range = RtPrismRange(prism);
        EXPECT_EQ(range >> (top * prism.m_transf), 1);
    }
}

TEST(RtPrism, RefusesWhatMakesNoFrame) {
    const char* const invalid = "BuildRtPrism: normal is invalid";
    const char* const open = "BuildRtPrism: pts aren't closed";
    const char* const order = "BuildRtPrism: f_depth < b_depth";
    const char* const same = "BuildRtPrism: pts[0] and pts[1] are the same\n";
    std::vector<GPosition> doubled = kSquare;
    doubled[1] = doubled[0];
    const std::vector<GPosition> unclosed(kSquare.begin(), kSquare.end() - 1);
    const struct {
        std::vector<GPosition> points;
        GUnitVector normal;
        double f_depth;
        Messages messages;
    } rows[] = {
        {unclosed, {0, 9e-7, 0}, 0, {invalid}},
        {unclosed, kZ, 0, {open}},
        {doubled, kZ, 0, {order}},
        {doubled, kZ, 1, {kNullUnitVector, same}},
        {{{1, 2, 3}}, kZ, 1, {kNullUnitVector, same}},
        {{}, kZ, 1, {open}},
    };
    MessageRecorder recorder;
    for (const auto& row : rows) {
        std::vector<GPosition> room(6, {7, 7, 7});
        GRtPrism prism = {ScaleTransf(77), room.data(), 77, 77};
        long err = 77;
        BuildRtPrism(row.points.data(), Count(row.points), row.normal, row.f_depth, 0.5, prism,
                     &err);
        EXPECT_EQ(err, 2);
        EXPECT_EQ(recorder.Take(), row.messages);
        EXPECT_EQ(prism.m_count, 77U);
        EXPECT_EQ(prism.m_transf.m_scaling, 77);
        EXPECT_EQ(room[0].m_z, row.messages.size() > 1 ? row.points[0].m_z + 0.5 : 7)
            << "the points are moved before the edge is tested";
    }
}

TEST(RtPrism, MapsWithoutTouchingItsPoints) {
    std::vector<GPosition> points = kSquare;
    GRtPrism prism = {TranslateTransf({1, 0, 0}), points.data(), 5, 2};
    G4x4 a;
    a = ScaleTransf(2);
    prism *= a;
    EXPECT_EQ(Numbers(RtPrismRange(prism)), (std::vector<double>{2, 0, 0, 4, 2, 4}));
    prism *= G4x4{{1, 0, 0, 0.5, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    EXPECT_EQ(Numbers(RtPrismRange(prism)), std::vector<double>(6, 0.0));
    EXPECT_EQ(Numbers(points[2]), Numbers(kSquare[2]));
}

TEST(BoreCone, RangeHoldsTheRaysThroughTheCircle) {
    GBoreCone cone;
    long err = 77;
    BuildBoreCone({{0, 0, 0}, kZ, 2, 1, 1}, {0, 0, -1}, cone, &err);
    EXPECT_EQ(err, 0);
    EXPECT_LT(Distance(BoreConeRange(cone), {{-3, -3, 1}, {3, 3, 2}}), 1e-14);
    GBoreCone mapped = cone;
    G4x4 a;
    a = BuildTransf(Rotation(0.0, 1.0, kY), {10, 0, 0}, 2, 1, 0, 0);
    mapped *= a;
    EXPECT_LT(Distance(BoreConeRange(mapped), {{12, -6, -6}, {14, 6, 6}}), 1e-13);
    Random random(61);
    for (int i = 0; i < 3000; ++i) {
        const GBoreLine l = random.BoreLine();
        const GPosition eye =
            l.Evaluate(l.m_back - random.Uniform(0.5, 5)) + 0.5 * GetPerpVector(l.m_direction);
        if (l.Evaluate(eye) > -0.5) {
            continue;  // the circle has to lie in front of the eye
        }
        // A point of the circle, and the point of its ray between the planes.
        GBoreLine disc = l;
        disc.m_front = disc.m_back = 0;
        const GPosition on_disc = Sample(random, disc, 1);
        const double at = random.Uniform(l.m_back, l.m_front) - l.Evaluate(eye);
        const GPosition p = Interpolate(at / -l.Evaluate(eye), eye, on_disc);
        EXPECT_EQ(BoreConeRange({l, eye}) >> p, 1);
    }
    MessageRecorder recorder;
    mapped *= G4x4{{1, 0, 0, 0.5, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    EXPECT_EQ(recorder.Take(), Messages{kNullUnitVector});
    EXPECT_EQ(Numbers(mapped), std::vector<double>(12, 0.0));
}

}  // namespace
}  // namespace kvgeom::test
