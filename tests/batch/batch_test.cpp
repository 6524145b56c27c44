// SPDX-License-Identifier: MIT

// Each batch call gives, bit for bit and message for message, what the single operation gives for
// each element. Runs for each kind of vectors (the variable KVGEOM_VECTORS), with results that stay
// in the caches and with results that go past them (KVGEOM_CACHE).

#include "tests/operations/source.h"
#include "tests/support/guarded.h"
#include "tests/support/messages.h"
#include "tests/support/tolerance_guard.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <string>

namespace kvgeom::test {
namespace {

// Up to 70 elements are several groups of any vectors with a part of one at the end. From 128 on,
// groups begin where the results are aligned.
constexpr unsigned long kMostElements = 70;
constexpr unsigned long kManyElements = 128;

template <class Out>
std::vector<std::uint64_t> BitsOf(const std::vector<Out>& results) {
    std::vector<std::uint64_t> bits;
    for (const Out& result : results) {
        if constexpr (sizeof(Out) == 1) {
            bits.push_back(result);
        } else {
            const std::vector<std::uint64_t> more = Bits(result);
            bits.insert(bits.end(), more.begin(), more.end());
        }
    }
    return bits;
}

// At every count, with the results elsewhere and, where they are of the elements' kind, over these.
// Neither elements nor results may be passed by.
template <class Record, class Out, class Batch, class Single>
void ExpectSame(const std::string& name, const std::vector<Record>& records, Batch batch,
                Single single) {
    SCOPED_TRACE(name + ", " + std::to_string(records.size()));
    MessageRecorder recorder;
    std::vector<Out> expected;
    for (const Record& record : records) {
        expected.push_back(static_cast<Out>(single(record)));
    }
    const Messages messages = recorder.Take();
    const size_t place = records.size() / 2 % 3;
    Guarded<Record> elements(records, static_cast<typename Guarded<Record>::Place>(place));
    Guarded<Out> results(std::vector<Out>(records.size()),
                         static_cast<typename Guarded<Out>::Place>(place));
    const auto ones = batch(elements.Get(), Count(records), results.Get());
    EXPECT_EQ(BitsOf(results.Copy()), BitsOf(expected));
    EXPECT_EQ(recorder.Take(), messages);
    if constexpr (sizeof(Out) == 1) {
        EXPECT_EQ(ones,
                  static_cast<unsigned long>(std::count(expected.begin(), expected.end(), 1)));
    } else {
        batch(elements.Get(), Count(records), elements.Get());
        EXPECT_EQ(BitsOf(elements.Copy()), BitsOf(expected));
    }
}

// Draws elements, mostly ordinary ones so that whole groups are, and calls test with them.
template <class Record, class Test>
void ForElements(Test test) {
    Random random(sizeof(Record));
    Source source(random);
    for (unsigned long round = 0; round < 4 * kMostElements; ++round) {
        random.WantExtremes(round % 4 == 3);
        std::vector<Record> records(round % (kMostElements + 1) +
                                    (round % 9 == 0 ? kManyElements : 0));
        for (Record& record : records) {
            record = source.Draw<Record>();
        }
        test(source, records);
    }
}

template <class Record, class Map, class Single>
void ExpectImages(const std::string& name, const Map& map, const std::vector<Record>& records,
                  void (*batch)(const Map&, const Record*, unsigned long, Record*), Single single) {
    ExpectSame<Record, Record>(
        name, records,
        [&](const Record* in, unsigned long count, Record* out) {
            batch(map, in, count, out);
            return 0;
        },
        [&](const Record& record) { return single(record, map); });
}

template <class Record, class Map, class Single>
void ExpectSameImages(const std::string& name, Source& source, const std::vector<Record>& records,
                      void (*batch)(const Map&, const Record*, unsigned long, Record*),
                      Single single) {
    ExpectImages<Record, Map>(name, source.Draw<Map>(), records, batch, single);
}

constexpr auto kRowForm = [](auto record, const auto& map) { return record *= map; };
constexpr auto kRecordFirst = [](const auto& record, const auto& map) { return record * map; };
constexpr auto kMapFirst = [](const auto& record, const auto& map) { return map * record; };

TEST(Batch, MapsPositions) {
    ForElements<GPosition>([](Source& source, const std::vector<GPosition>& p) {
        ExpectSameImages<GPosition, GMatrix>("matrix", source, p, MapPositions, kRowForm);
        ExpectSameImages<GPosition, GTransf>("transf", source, p, MapPositions, kRowForm);
        ExpectSameImages<GPosition, G4x4>("4x4", source, p, MapPositions, kRowForm);
        ExpectSameImages<GPosition, G4x4>("4x4, columns", source, p, MapPositionsByColumns,
                                          kRecordFirst);
    });
}

TEST(Batch, MapsVectors) {
    ForElements<GVector>([](Source& source, const std::vector<GVector>& v) {
        ExpectSameImages<GVector, GMatrix>("matrix", source, v, MapVectors, kRowForm);
        ExpectSameImages<GVector, GTransf>("transf", source, v, MapVectors, kRowForm);
        ExpectSameImages<GVector, G4x4>("4x4", source, v, MapVectors, kRowForm);
        ExpectSameImages<GVector, G4x4>("4x4, columns", source, v, MapVectorsByColumns,
                                        kRecordFirst);
    });
}

TEST(Batch, MapsUnitVectors) {
    ForElements<GUnitVector>([](Source& source, const std::vector<GUnitVector>& u) {
        ExpectSameImages<GUnitVector, GMatrix>("matrix", source, u, MapUnitVectors, kRowForm);
        ExpectSameImages<GUnitVector, GTransf>("transf", source, u, MapUnitVectors, kRowForm);
        ExpectSameImages<GUnitVector, G4x4>("4x4", source, u, MapUnitVectors, kRowForm);
        ExpectSameImages<GUnitVector, GMatrix>("matrix, columns", source, u,
                                               MapUnitVectorsByColumns, kMapFirst);
        ExpectSameImages<GUnitVector, G4x4>("4x4, columns", source, u, MapUnitVectorsByColumns,
                                            kRecordFirst);
    });
}

// Lengths at the edges of the unit band and of what has no direction, weights at the smallest
// divisor; to an ulp.
TEST(Batch, DecidesOnLengthsAndWeightsAsTheSingleOperationsDo) {
    for (const double edge : {1 - 50 * 0x1p-53, 1 + 25 * DBL_EPSILON, 50 * DBL_EPSILON}) {
        for (const double length : {Down(edge), edge, Up(edge)}) {
            const std::vector<GUnitVector> u = {
                {length, 0, 0}, {0, -length, 0}, {0, 0, length}, {length, 0, 0}};
            ExpectImages<GUnitVector, GMatrix>("length", kGIdentityMatrix, u, MapUnitVectors,
                                               kRowForm);
        }
    }
    for (const double weight : {Down(DBL_EPSILON), DBL_EPSILON, Up(DBL_EPSILON)}) {
        for (const double sign : {1.0, -1.0}) {
            G4x4 a = kGIdentity4x4;
            a.m_matrix[15] = sign * weight;
            ExpectImages<GPosition, G4x4>("weight", a, std::vector(9, GPosition{1, 2, 3}),
                                          MapPositions, kRowForm);
            ExpectImages<GVector, G4x4>("weight", a, std::vector(9, GVector{1, 2, 3}), MapVectors,
                                        kRowForm);
            ExpectImages<GUnitVector, G4x4>("weight", a, std::vector(9, kX), MapUnitVectors,
                                            kRowForm);
        }
    }
}

TEST(Batch, MapsBoxes) {
    ForElements<GBox>([](Source& source, const std::vector<GBox>& b) {
        ExpectSameImages<GBox, GMatrix>("matrix", source, b, MapBoxes, kRowForm);
        ExpectSameImages<GBox, GTransf>("transf", source, b, MapBoxes, kRowForm);
        ExpectSameImages<GBox, G4x4>("4x4", source, b, MapBoxes, kRowForm);
        ExpectSameImages<GBox, GMatrix>("matrix, columns", source, b, MapBoxesByColumns, kMapFirst);
        ExpectSameImages<GBox, GTransf>("transf, columns", source, b, MapBoxesByColumns, kMapFirst);
        ExpectSameImages<GBox, G4x4>("4x4, columns", source, b, MapBoxesByColumns, kRecordFirst);
    });
}

// A fence that isn't always well made.
struct Fence {
    std::array<GPosition, 9> points;
    GPtFence fence;

    explicit Fence(Source& source) {
        for (GPosition& p : points) {
            p = source.Draw<GPosition>();
        }
        fence = {source.Draw<unsigned long>(), points.data(), source.Draw<GUnitVector>(),
                 source.Draw<double>(), source.Draw<double>()};
        if (fence.m_count > 0) {
            points[fence.m_count - 1] = points[0];
        }
    }
};

template <class Record, class Volume, class Single>
void ExpectSameAnswers(const std::string& name, const std::vector<Record>& records,
                       const Volume& volume,
                       unsigned long (*batch)(const Volume&, const Record*, unsigned long,
                                              unsigned char*),
                       Single single) {
    ExpectSame<Record, unsigned char>(
        name, records,
        [&](const Record* in, unsigned long count, unsigned char* out) {
            return batch(volume, in, count, out);
        },
        single);
}

TEST(Batch, TestsBoxes) {
    ForElements<GBox>([](Source& source, const std::vector<GBox>& boxes) {
        const auto line = source.Draw<GBoreLine>();
        const auto volume = source.Draw<GClipVolume>();
        GBox box = source.Draw<GBox>();
        const Fence fence(source);
        const double tol = source.Draw<double>();
        ExpectSameAnswers<GBox, GBoreLine>("bore line", boxes, line, IntersectBoxes,
                                           [&](const GBox& b) { return line && b; });
        ExpectSameAnswers<GBox, GClipVolume>("volume", boxes, volume, IntersectBoxes,
                                             [&](const GBox& b) { return volume && b; });
        ExpectSameAnswers<GBox, GClipVolume>("volume holds", boxes, volume, ContainBoxes,
                                             [&](const GBox& b) { return volume >> b; });
        ExpectSameAnswers<GBox, GPtFence>("fence", boxes, fence.fence, IntersectBoxes,
                                          [&](const GBox& b) { return fence.fence && b; });
        ExpectSameAnswers<GBox, GBox>("box holds", boxes, box, ContainBoxes,
                                      [&](const GBox& b) { return box >> b; });
        ExpectSame<GBox, unsigned char>(
            "box", boxes,
            [&](const GBox* in, unsigned long count, unsigned char* out) {
                return IntersectBoxes(box, tol, in, count, out);
            },
            [&](GBox b) { return box.IsIntersectTol(b, tol); });
    });
}

TEST(Batch, ClassifiesPositions) {
    ForElements<GPosition>([](Source& source, const std::vector<GPosition>& positions) {
        const auto line = source.Draw<GBoreLine>();
        const auto volume = source.Draw<GClipVolume>();
        const auto box = source.Draw<GBox>();
        ExpectSameAnswers<GPosition, GBox>("box", positions, box, ClassifyPositions,
                                           [&](const GPosition& p) { return box >> p; });
        ExpectSameAnswers<GPosition, GBoreLine>("bore line", positions, line, ClassifyPositions,
                                                [&](const GPosition& p) { return line >> p; });
        ExpectSameAnswers<GPosition, GClipVolume>("volume", positions, volume, ClassifyPositions,
                                                  [&](const GPosition& p) {
                                                      int place;
                                                      long err;
                                                      IsPtInClipVolume(volume, p, &place, &err);
                                                      return place;
                                                  });
        // The planes are made once, and tell once of what they lack.
        const Fence fence(source);
        std::array<GPosition, 10> points;
        std::array<GUnitVector, 10> normals;
        fence.fence.FindPlanes(points.data(), normals.data());
        std::vector<unsigned char> answers(positions.size());
        const unsigned long inside =
            ClassifyPositions(fence.fence, positions.data(), Count(positions), answers.data());
        unsigned long expected_inside = 0;
        for (size_t i = 0; i < positions.size(); ++i) {
            int expected;
            long err;
            IsPtInPtFence(fence.fence, points.data(), normals.data(), positions[i], &expected,
                          &err);
            EXPECT_EQ(answers[i], expected) << i;
            expected_inside += expected == 1 ? 1 : 0;
        }
        EXPECT_EQ(inside, expected_inside);
    });
}

// Now and then, zeros of both signs where the numbers of one component aren't on the other side.
template <class Record>
void PutZeros(Random& random, std::vector<Record>& records) {
    const size_t component = random.Below(2 * sizeof(Record) / sizeof(double));
    for (Record& record : records) {
        std::array<double, sizeof(Record) / sizeof(double)> numbers;
        std::memcpy(&numbers, &record, sizeof record);
        if (component < numbers.size()) {
            double& x = numbers[component];
            x = random.Next() % 2 == 0 ? random.Uniform(0, 1) : random.Next() % 2 == 0 ? 0.0 : -0.0;
            x = component % 2 == 0 ? x : -x;
        }
        std::memcpy(&record, &numbers, sizeof record);
    }
}

TEST(Batch, FindsTheBoxAroundPointsAndBoxes) {
    ForElements<GPosition>([](Source& source, std::vector<GPosition> positions) {
        if (!positions.empty()) {
            PutZeros(source.GetRandom(), positions);
            GBox expected = {positions[0], positions[0]};
            for (const GPosition& p : positions) {
                for (unsigned axis = 0; axis < 3; ++axis) {
                    double& low = expected.m_low[axis];
                    double& high = expected.m_high[axis];
                    low = p[axis] < low ? p[axis] : low;
                    high = p[axis] > high ? p[axis] : high;
                }
            }
            Guarded<GPosition> elements(positions, Guarded<GPosition>::Place::kBeforeGuard);
            EXPECT_EQ(Bits(BuildBox(Count(positions), elements.Get())), Bits(expected));
        }
    });
    ForElements<GBox>([](Source& source, std::vector<GBox> boxes) {
        PutZeros(source.GetRandom(), boxes);
        GBox expected = BuildBox(kBig, kBig, kBig, -kBig, -kBig, -kBig);
        for (const GBox& box : boxes) {
            expected |= box;
        }
        Guarded<GBox> elements(boxes, Guarded<GBox>::Place::kBeforeGuard);
        EXPECT_EQ(Bits(UniteBoxes(elements.Get(), Count(boxes))), Bits(expected)) << boxes.size();
    });
}

// At every count, with the extreme at every place: the ends of runs and the parts of groups.
TEST(Batch, FindsTheExtremeWhereverItIs) {
    for (unsigned long count = 1; count <= kMostElements; ++count) {
        for (unsigned long place = 0; place < count; ++place) {
            std::vector<GPosition> positions(count, {1, 2, 3});
            const unsigned axis = static_cast<unsigned>(place % 3);
            GBox expected = {positions[0], positions[0]};
            expected.m_low[axis] = positions[place][axis] = -1;
            expected.m_high[axis] = count == 1 ? -1 : expected.m_high[axis];
            ASSERT_EQ(Bits(BuildBox(count, positions.data())), Bits(expected)) << count << place;
            std::vector<GBox> boxes(count, {{1, 2, 3}, {4, 5, 6}});
            expected = boxes[0];
            expected.m_high[axis] = boxes[place].m_high[axis] = 7;
            ASSERT_EQ(Bits(UniteBoxes(boxes.data(), count)), Bits(expected)) << count << place;
        }
    }
}

TEST(Batch, ComposesAndInverts) {
    ForElements<GTransf>([](Source& source, const std::vector<GTransf>& t) {
        std::vector<GTransf> others(t.size());
        for (GTransf& other : others) {
            other = source.Draw<GTransf>();
        }
        std::vector<GTransf> expected;
        for (size_t i = 0; i < t.size(); ++i) {
            expected.push_back(t[i] * others[i]);
        }
        ComposeTransfs(t.data(), others.data(), Count(t), others.data());
        EXPECT_EQ(BitsOf(others), BitsOf(expected));
        ExpectSame<GTransf, GTransf>(
            "inverse", t,
            [](const GTransf* in, unsigned long count, GTransf* out) {
                InvertTransfs(in, count, out);
                return 0;
            },
            [](const GTransf& each) { return each.Inverse(); });
    });
    ForElements<G4x4>([](Source& source, const std::vector<G4x4>& a) {
        std::vector<G4x4> others(a.size());
        for (G4x4& other : others) {
            other = source.Draw<G4x4>();
        }
        std::vector<G4x4> expected;
        for (size_t i = 0; i < a.size(); ++i) {
            expected.push_back(a[i] * others[i]);
        }
        Compose4x4s(a.data(), others.data(), Count(a), others.data());
        EXPECT_EQ(BitsOf(others), BitsOf(expected));
        ExpectSame<G4x4, G4x4>(
            "inverse", a,
            [](const G4x4* in, unsigned long count, G4x4* out) {
                Invert4x4s(in, count, out);
                return 0;
            },
            [](const G4x4& each) { return each.Inverse(); });
    });
}

// Rotations that cancel up to about the tolerance, a few of them at the poles. For large tolerances
// an angle and its tangent aren't the same.
void ExpectFlagsAsTheAnglesTell(double tolerance) {
    const ToleranceGuard guard;
    long err = 77;
    SetFitTolerance(1, &err);
    SetDistanceTolerance(std::max(tolerance, GetDistanceTolerance()), &err);
    SetRelativeTolerance(tolerance, &err);
    ASSERT_EQ(GetRelativeTolerance(), tolerance);
    Random random(10);
    constexpr int kPairs = 10000;
    int rotating = 0;
    for (int k = 0; k < kPairs; ++k) {
        const GUnitVector axes[] = {kX, kY, kZ, random.Direction()};
        const GUnitVector& axis = axes[random.Below(4)];
        const double angle = k % 7 == 0 ? kPi / 2 : random.Uniform(-4, 4);
        const double rest = random.Uniform(-3, 3) * GetRelativeTolerance();
        const GTransf first = RotateTransf(angle, axis);
        const GTransf second = k % 5 == 0 ? first : RotateTransf(rest - angle, axis);
        GTransf composed;
        ComposeTransfs(&first, &second, 1, &composed);
        double a = kNaN;
        double b = kNaN;
        double c = kNaN;
        GPosition origin;
        GetRotAngles(composed, &a, &b, &c, origin);
        const double tol = GetRelativeTolerance();
        const bool rotates = std::fabs(a) > tol || std::fabs(b) > tol || std::fabs(c) > tol;
        ASSERT_EQ(composed.m_hasRotation, rotates ? 1 : 0) << k;
        ASSERT_EQ((first * second).m_hasRotation, rotates ? 1 : 0) << k;
        GTransf converted;
        G4x4 homogeneous;
        homogeneous = composed;
        ConvertG4x4ToGTransf(homogeneous, converted);
        ASSERT_EQ(converted.m_hasRotation, rotates ? 1 : 0) << k;
        rotating += rotates ? 1 : 0;
    }
    EXPECT_GT(rotating, kPairs / 4);
    EXPECT_LT(rotating, kPairs * 9 / 10);
}

TEST(Batch, ComposesRotationFlagsAsTheAnglesTell) {
    for (const double tolerance : {1e-10, 0.25, 0.75}) {
        ExpectFlagsAsTheAnglesTell(tolerance);
    }
}

double Nudged(Random& random, double x) {
    for (std::uint64_t ulps = random.Next() % 4; ulps > 0; --ulps) {
        x = random.Next() % 2 == 0 ? Up(x) : Down(x);
    }
    return x;
}

// Makes the numbers so large or so small that products overflow or underflow, or the line far away
// from the origin for its length.
double Rescale(Random& random, GBoreLine& line) {
    const double scale = std::ldexp(1, static_cast<int>(random.Below(2090)) - 1070);
    const double factor = std::ldexp(1, static_cast<int>(random.Below(800)) - 400);
    switch (random.Below(3)) {
        case 0:
            line.m_point += random.Vector() * std::ldexp(1, static_cast<int>(random.Below(50)));
            return 1;
        case 1:
            line.m_direction = {line.m_direction.m_x * factor, line.m_direction.m_y * factor,
                                line.m_direction.m_z * factor};
            line.m_front /= factor;
            line.m_back /= factor;
            return 1;
        default:
            line = BuildBoreLine(GPosition{0, 0, 0} + scale * (line.m_point - GPosition{0, 0, 0}),
                                 line.m_direction, line.m_front * scale, line.m_back * scale,
                                 line.m_radius * scale);
            return scale;
    }
}

// A box that the line leaves on one axis just where it enters it on the next, or beside it.
GBox TouchedBox(Random& random, const GBoreLine& line, double scale) {
    const GPosition p = line.Evaluate(random.Uniform(line.m_back, line.m_front));
    GBox box = {p, p};
    const unsigned axis = static_cast<unsigned>(random.Next() % 3);
    const double r = line.m_radius;
    const bool is_huge = random.Next() % 4 == 0;
    const int exponent = static_cast<int>(random.Below(60));
    for (unsigned i = 0; i < 3; ++i) {
        // Beside huge boxes, slopes count as parallel.
        const double size =
            random.Uniform(0.1, 3) * (is_huge ? std::ldexp(scale, exponent) : scale);
        const bool begins_here =
            (line.m_direction[i] > 0) == (i == axis ? false : i == (axis + 1) % 3);
        // Huge boxes are left later on, too.
        const double beyond = is_huge && i != (axis + 1) % 3 ? random.Uniform(0, 1e4) * scale : 0;
        const double side = Nudged(random, begins_here ? p[i] + r - beyond : p[i] - r + beyond);
        box.m_low[i] = begins_here ? side : side - size;
        box.m_high[i] = begins_here ? side + size : side;
    }
    return box;
}

TEST(Batch, DecidesOnTouchedBoxesAsTheBoreLineDoes) {
    Random random(9);
    int hits = 0;
    constexpr int kBoxes = 64;
    constexpr int kLines = 3000;
    for (int k = 0; k < kLines; ++k) {
        GBoreLine line = random.BoreLine();
        line.m_radius = k % 3 == 0 ? 0 : line.m_radius;
        line.m_front += k % 5 == 0 ? 1e4 : 0;
        if (k % 4 == 1) {  // nearly parallel to an axis, or quite
            line.m_direction[static_cast<unsigned>(k / 4 % 3)] =
                k % 8 == 1 ? 0 : std::ldexp(random.Uniform(-1, 1), -static_cast<int>(k % 70));
        }
        const double scale = k % 6 == 2 ? Rescale(random, line) : 1;
        std::vector<GBox> boxes(kBoxes);
        for (GBox& box : boxes) {
            box = TouchedBox(random, line, scale);
        }
        std::vector<unsigned char> answers(boxes.size());
        IntersectBoxes(line, boxes.data(), kBoxes, answers.data());
        for (size_t i = 0; i < boxes.size(); ++i) {
            const int expected = line && boxes[i];
            ASSERT_EQ(answers[i], expected) << k << " " << i;
            hits += expected;
        }
    }
    EXPECT_GT(hits, kLines * kBoxes / 10);
    EXPECT_LT(hits, kLines * kBoxes * 9 / 10);
    // Beside the line by a distance that is lost when it is divided by the size of the box.
    const GBoreLine thin = BuildBoreLine(GPosition{0, 0, 0}, kZ, 1, -1, 0x1p-800);
    const std::vector<GBox> boxes(kBoxes, BuildBox(0x1p-700, -1, -1, 0x1p399, 1, 1));
    std::vector<unsigned char> answers(boxes.size());
    EXPECT_EQ(thin && boxes[0], 1);
    EXPECT_EQ(IntersectBoxes(thin, boxes.data(), kBoxes, answers.data()), kBoxes);
}

// Points and boxes that lie on a plane, or the tolerance beside it, to an ulp or some, from near
// the volume to so far away that no filter reaches there; volumes at the origin and elsewhere.
TEST(Batch, DecidesOnPlanesAsTheSingleTestsDo) {
    Random random(11);
    constexpr unsigned long kElements = 64;
    constexpr int kVolumes = 1500;
    unsigned long places[3] = {};
    for (int k = 0; k < kVolumes; ++k) {
        GBox sides = random.ProperBox();
        GClipVolume volume;
        ConvertGBoxToGClipVolume(&sides, &volume);
        GTransf t = random.Similarity();
        t.m_translation *= k % 4 == 1 ? std::ldexp(1, static_cast<int>(random.Below(30))) : 1;
        volume = k % 4 == 0 ? volume : volume * t;
        // Far away, other planes than the one that is touched would decide.
        volume.m_count = k % 3 == 0 ? 1 : 6;
        const double far = k % 3 == 0 ? std::ldexp(1, static_cast<int>(random.Below(50))) : 1;
        std::vector<GPosition> points(kElements);
        std::vector<GBox> boxes(kElements);
        for (unsigned long i = 0; i < kElements; ++i) {
            const auto& plane = volume.m_planes[random.Below(volume.m_count)];
            const GVector n = {plane[0], plane[1], plane[2]};
            const GVector beside = far * (n * random.Vector());
            const double distances[] = {0, GetDistanceTolerance(), -GetDistanceTolerance()};
            const GVector p = (distances[random.Below(3)] - plane[3]) * n + beside;
            points[i] = {Nudged(random, p.m_x), Nudged(random, p.m_y), Nudged(random, p.m_z)};
            // The corner that counts is one of the box's sides on each axis.
            const GVector size = {random.Uniform(0, 2), random.Uniform(0, 2), random.Uniform(0, 2)};
            boxes[i] = {points[i], points[i] + size};
            for (unsigned axis = 0; axis < 3; ++axis) {
                if (n[axis] > 0) {
                    boxes[i].m_low[axis] = points[i][axis] - size[axis];
                    boxes[i].m_high[axis] = points[i][axis];
                }
            }
        }
        std::vector<unsigned char> answers(kElements);
        ClassifyPositions(volume, points.data(), kElements, answers.data());
        for (unsigned long i = 0; i < kElements; ++i) {
            int place = 77;
            long err = 77;
            IsPtInClipVolume(volume, points[i], &place, &err);
            ASSERT_EQ(answers[i], place) << k << " " << i;
            ++places[place];
        }
        IntersectBoxes(volume, boxes.data(), kElements, answers.data());
        for (unsigned long i = 0; i < kElements; ++i) {
            ASSERT_EQ(answers[i], volume && boxes[i]) << k << " " << i;
        }
        ContainBoxes(volume, boxes.data(), kElements, answers.data());
        for (unsigned long i = 0; i < kElements; ++i) {
            ASSERT_EQ(answers[i], volume >> boxes[i]) << k << " " << i;
        }
    }
    EXPECT_GT(places[0], kElements * kVolumes / 10);
    EXPECT_GT(places[2], kElements * kVolumes / 25);
}

}  // namespace
}  // namespace kvgeom::test
