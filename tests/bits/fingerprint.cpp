// SPDX-License-Identifier: MIT

// Runs every operation that uses no angle function over the same random records, ordinary and
// extreme, and prints a line for each: its name and a hash over the bits of all that it returned,
// wrote and reported. Two builds that print the same lines compute the same bits.

#include "tests/support/records.h"

#include <cinttypes>
#include <cstdio>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace kvgeom::test;

namespace {

constexpr int kCases = 4000;

// FNV-1a.
class Hash {
  public:
    void Add(std::uint64_t value) {
        for (int i = 0; i < 8; ++i) {
            m_value = (m_value ^ (value & 0xFFU)) * 0x100000001b3U;
            value >>= 8U;
        }
    }
    std::uint64_t Value() const { return m_value; }

  private:
    std::uint64_t m_value = 0xcbf29ce484222325U;
};

std::vector<std::pair<std::string, Hash>> g_lines;  // in the order of the first case
size_t g_next_line = 0;
Hash g_messages;  // passed since the last result
long g_err = 77;  // where operations write their error codes

void HashMessage(const char* message) {
    for (; *message != '\0'; ++message) {
        g_messages.Add(static_cast<unsigned char>(*message));
    }
}

// Adds one result of an operation, with the messages and the error code that came with it. All
// cases give the same results in the same order.
template <class Result>
void Put(const char* name, const Result& result) {
    if (g_next_line == g_lines.size()) {
        g_lines.emplace_back(name, Hash());
    }
    Hash& hash = g_lines[g_next_line++].second;
    if constexpr (std::is_integral_v<Result>) {
        hash.Add(static_cast<std::uint64_t>(result));
    } else {
        for (const std::uint64_t bits : Bits(result)) {
            hash.Add(bits);
        }
    }
    hash.Add(g_messages.Value());
    hash.Add(static_cast<std::uint64_t>(std::exchange(g_err, 77)));
    g_messages = Hash();
}

// The inputs of one case, drawn in this order; two of each kind.
struct Inputs {
    double x, y, tol;
    unsigned index;
    int digits;
    GVector v, w;
    GUnitVector u, n;
    GPosition p, q;
    GMatrix m, k;
    GTransf t, s;
    G4x4 a, b;
    GBox box, other;
    GBoreLine l, o;
    std::array<GPosition, 5> profile;

    explicit Inputs(Random& random)
        : x(random.Number()),
          y(random.Number()),
          tol(random.Uniform(0, 1e-5)),
          index(static_cast<unsigned>(random.Next() % 5)),
          digits(static_cast<int>(random.Next() % 24) - 12),
          v(random.Vector()),
          w(random.Next() % 2 == 0 ? random.Vector() : v * random.Number()),
          u(random.Direction()),
          n(random.Next() % 2 == 0 ? random.Direction() : GetPerpVector(u)),
          p(random.Point()),
          q(random.Point()),
          m(random.Matrix()),
          k(random.RotationMatrix()),
          t(random.Similarity()),
          s(random.Similarity()),
          a(random.Next() % 2 == 0 ? random.Affine() : random.Homogeneous()),
          b(random.Homogeneous()),
          box(random.Box()),
          other(random.Box()),
          l(random.BoreLine()),
          o(random.BoreLine()) {
        for (GPosition& corner : profile) {
            corner = random.Point();
        }
        profile.back() = profile.front();
    }

    // A fence over the given points.
    GPtFence Fence(std::array<GPosition, 5>& points) const {
        return {points.size(), points.data(), u, y, y - tol};
    }

    GClipVolume Volume() const {
        GBox sides = box;
        GClipVolume volume;
        ConvertGBoxToGClipVolume(&sides, &volume);
        volume.m_planes[1][1] += w.m_x;
        volume.m_planes[4][0] += w.m_y;
        return volume;
    }
};

// The composition without its rotation flag, which an angle decides.
GTransf WithoutRotationFlag(GTransf t) {
    t.m_hasRotation = 0;
    return t;
}

template <class Record, class Operand>
void PutInPlace(const char* name, Record record, const Operand& operand) {
    Put(name, record *= operand);
}

void PutVolume(const char* name, const GClipVolume& volume) {
    std::array<double, 25> numbers;
    std::copy_n(&volume.m_planes[0][0], 24, numbers.data());
    numbers[24] = volume.m_count;
    Put(name, numbers);
}

// What a fence or prism is, without the pointer; its points are in the room.
void PutFence(const char* name, const GPtFence& fence, const std::array<GPosition, 5>& room) {
    Put(name, fence.m_direction);
    Put(name, GPosition{fence.m_front, fence.m_back, static_cast<double>(fence.m_count)});
    Put(name, room);
}

void PutPrism(const char* name, const GRtPrism& prism, const std::array<GPosition, 5>& room) {
    Put(name, WithoutRotationFlag(prism.m_transf));
    Put(name, prism.m_height);
    Put(name, room);
}

// The written text takes part like a message. For records of input numbers alone: of a NaN that was
// computed the sign, which is written, is nobody's promise.
template <class Record>
void PutText(const char* name, const Record& record) {
    static std::FILE* const file = std::tmpfile();
    std::rewind(file);
    GPrint_to_File(file, record, &g_err);
    const long size = std::ftell(file);
    std::rewind(file);
    std::string text(static_cast<size_t>(size), ' ');
    HashMessage(text.substr(0, std::fread(text.data(), 1, text.size(), file)).c_str());
    Put(name, size);
}

// The record as read from a line of numbers.
template <class Record>
void PutRead(const char* name, const char* numbers, Record record) {
    static std::FILE* const file = std::tmpfile();
    std::rewind(file);
    std::fputs(numbers, file);
    std::rewind(file);
    GRead_from_File(file, record, &g_err);
    Put(name, record);
}

void RunKernel(const Inputs& i) {
    double rounded;
    char text[40] = {};
    KVRoundValue(i.x, i.digits, &rounded, sizeof text, text);
    HashMessage(text);
    Put("KVRoundValue", rounded);
    SetDistanceTolerance(i.x, &g_err);
    Put("SetDistanceTolerance", GetDistanceTolerance());
    SetDistanceTolerance(1e-6, &g_err);
    Put("SetDistanceTolerance back", GetDistanceTolerance());
}

// The checks pass nothing but messages.
void RunValidity(const Inputs& i) {
    const auto put = [](const char* name, const auto& record) {
        Gassert_valid(record);
        Put(name, 0);
    };
    put("Gassert_valid GPosition", i.p);
    put("Gassert_valid GUnitVector", i.u);
    put("Gassert_valid GBox", i.box);
    put("Gassert_valid G4x4", i.a);
    put("Gassert_valid GBoreLine", i.l);
    put("Gassert_valid GBoreCone", GBoreCone{i.l, i.p});
    int flag;
    Gassert_valid(i.v, &flag);
    Put("Gassert_valid GVector", flag);
    Gassert_valid(i.m, &flag);
    Put("Gassert_valid GMatrix", flag);
    Gassert_valid(i.t, &flag);
    Put("Gassert_valid GTransf", flag);
    std::array<GPosition, 5> points = i.profile;
    put("Gassert_valid GPtFence", i.Fence(points));
    put("Gassert_valid GPtFrustum", GPtFrustum{i.Fence(points), i.q});
    put("Gassert_valid GRtPrism", GRtPrism{i.t, points.data(), i.index, i.y});
}

void RunPoints(const Inputs& i) {
    Put("GVector []", i.v[i.index]);
    Put("GUnitVector []", i.u[i.index]);
    Put("GPosition []", i.p[i.index]);
    Put("GVector::IsNull", i.v.IsNull());
    Put("GVector::IsNull tol", i.v.IsNull(i.x));
    Put("GUnitVector::IsNull", i.u.IsNull());
    Put("GVector::IsEqual", i.v.IsEqual(i.w));
    Put("GUnitVector::IsEqual", i.u.IsEqual(i.n));
    Put("GVector::IsColinear", i.v.IsColinear(i.w));
    Put("GVector::IsOrthogonal", i.v.IsOrthogonal(i.w));
    Put("GUnitVector::IsColinear", i.u.IsColinear(i.w));
    Put("GUnitVector::IsOrthogonal", i.u.IsOrthogonal(i.n));
    Put("GVector /", i.v / i.x);
    GUnitVector u = i.u;
    Put("GUnitVector +=", u += i.v);
    Put("GUnitVector -=", u -= i.w);
    Put("BuildUnitVector", BuildUnitVector(i.x, i.y, i.v.m_x));
    Put("BuildUnitVector tol", BuildUnitVector(i.x, i.y, i.v.m_x, i.w.m_x, &g_err));
    Put("BuildUnitVector points", BuildUnitVector(i.p, i.q));
    Put("GetPerpVector", GetPerpVector(i.u));
    GVector b = i.w;
    ModifyOrthoVector(i.v, b);
    Put("ModifyOrthoVector v", b);
    u = i.u;
    ModifyOrthoVector(i.v, u);
    Put("ModifyOrthoVector u", u);
    Put("GPosition::IsEqual", i.p.IsEqual(i.q));
    Put("GPosition::IsNull", i.p.IsNull());
    Put("Interpolate", Interpolate(i.x, i.p, i.q));
}

void RunMapping(const Inputs& i) {
    PutInPlace("GPosition *= GMatrix", i.p, i.m);
    Put("GPosition * GTransf", i.p * i.t);
    PutInPlace("GPosition *= GTransf", i.p, i.t);
    Put("GPosition ^ GTransf", i.p ^ i.t);
    Put("G4x4 * GPosition", i.a * i.p);
    Put("GPosition * G4x4", i.p * i.a);
    PutInPlace("GPosition *= G4x4", i.p, i.a);
    PutInPlace("GVector *= GMatrix", i.v, i.m);
    Put("GVector * GTransf", i.v * i.t);
    PutInPlace("GVector *= GTransf", i.v, i.t);
    Put("GVector ^ GTransf", i.v ^ i.t);
    Put("G4x4 * GVector", i.a * i.v);
    Put("GVector * G4x4", i.v * i.a);
    PutInPlace("GVector *= G4x4", i.v, i.a);
    Put("GUnitVector * GMatrix", i.u * i.m);
    Put("GMatrix * GUnitVector", i.m * i.u);
    PutInPlace("GUnitVector *= GMatrix", i.u, i.m);
    Put("GUnitVector * GTransf", i.u * i.t);
    PutInPlace("GUnitVector *= GTransf", i.u, i.t);
    Put("GUnitVector ^ GTransf", i.u ^ i.t);
    Put("GUnitVector * G4x4", i.u * i.a);
    Put("G4x4 * GUnitVector", i.a * i.u);
    PutInPlace("GUnitVector *= G4x4", i.u, i.a);
}

void RunMatrices(const Inputs& i) {
    Put("BuildMatrix rows", BuildMatrix(i.v, i.w, i.v, 0));
    Put("BuildMatrix columns", BuildMatrix(i.u, i.n, i.u, 1));
    Put("GMatrix []", i.m[i.index]);
    Put("GMatrix::IsEqual", i.m.IsEqual(i.k));
    Put("GMatrix::IsNull", i.m.IsNull());
    Put("GMatrix::IsIdentity", i.m.IsIdentity());
    Put("GMatrix::IsEuclidean", i.k.IsEuclidean());
    Put("GetDeterminant", GetDeterminant(i.m));
    Put("GMatrix::Transpose", i.m.Transpose());
    Put("GMatrix *", i.m * i.k);
    PutInPlace("GMatrix *=", i.m, i.k);
    Put("Rotation", Rotation(i.x, i.y, i.u));
    Put("Reflection", Reflection(i.u));
    GMatrix out;
    MakeOrthogonal(i.m, out, &g_err);
    Put("MakeOrthogonal", out);
    out = i.k;
    out.m_elements[1][2] += i.tol;
    MakeOrthogonalIt(out, out, &g_err);
    Put("MakeOrthogonalIt", out);
    GVector errors = {0, 0, 0};
    CheckOrthogonal(i.m, &errors.m_x, &errors.m_y);
    Put("CheckOrthogonal", errors);
}

void RunTransformations(const Inputs& i) {
    Put("BuildTransf", BuildTransf(i.m, i.v, i.x, i.digits, 1, 300));
    Put("GTransf::IsNull", i.t.IsNull());
    Put("GTransf::IsIdentity", i.t.IsIdentity());
    Put("GTransf::IsEqual", i.t.IsEqual(i.s));
    Put("GTransf::IsInvertible", i.t.IsInvertible());
    Put("GTransf::Inverse", i.t.Inverse());
    Put("GTransf *", WithoutRotationFlag(i.t * i.s));
    GTransf t = i.t;
    Put("GTransf *=", WithoutRotationFlag(t *= i.s));
    Put("ScaleTransf", ScaleTransf(i.x));
    Put("ScaleTransf c", ScaleTransf(i.x, i.p));
    Put("RotateTransf", RotateTransf(i.x, i.y, i.u));
    Put("RotateTransf p", RotateTransf(i.x, i.y, i.u, i.p));
    Put("ReflectTransf", ReflectTransf(i.u));
    Put("ReflectTransf p", ReflectTransf(i.u, i.p));
    Put("TranslateTransf", TranslateTransf(i.v));
    Put("CoordinateTransf x y", CoordinateTransf(i.p, i.u, i.n));
    Put("CoordinateTransf z", CoordinateTransf(i.p, i.u));
    t = i.t;
    OldToNewTransf(i.p, i.u, i.n, i.q, i.u, i.n, t, &g_err);
    Put("OldToNewTransf", t);
    GUnitVector normal = {};
    GVector offset;
    Put("GetMirrorPlaneNormal", GetMirrorPlaneNormal(ReflectTransf(i.u, i.p), normal, offset));
    Put("GetMirrorPlaneNormal normal", normal);
    Put("GetMirrorPlaneNormal offset", offset);
    t = i.t;
    t.m_matrix.m_elements[0][1] += i.tol;
    int healed = 77;
    GTransfHealer(t, t, &healed, &g_err);
    Put("GTransfHealer", t);
    Put("GTransfHealer healed", healed);
}

void RunHomogeneous(const Inputs& i) {
    Put("Build4x4", Build4x4(i.a.m_matrix));
    G4x4 a;
    a = i.t;
    Put("G4x4 = GTransf", a);
    Put("G4x4 *", i.a * i.b);
    Put("G4x4 * GTransf", i.a * i.t);
    Put("GTransf * G4x4", i.t * i.a);
    PutInPlace("G4x4 *=", i.a, i.b);
    PutInPlace("G4x4 *= GTransf", i.a, i.t);
    Put("G4x4::Inverse", i.a.Inverse());
    Put("G4x4::IsEqual", i.a.IsEqual(i.b));
    Put("G4x4::IsInvertible", i.b.IsInvertible());
    Put("G4x4::IsValid", i.a.IsValid());
    Put("G4x4::HasReflection", i.a.HasReflection());
    GTransf t = i.t;
    a = i.s;
    a.m_matrix[4] += i.tol * i.tol;
    Put("ConvertG4x4ToGTransf", ConvertG4x4ToGTransf(a, t));
    Put("ConvertG4x4ToGTransf t", WithoutRotationFlag(t));
    t = i.b;
    Put("GTransf = G4x4", WithoutRotationFlag(t));
    a = G4x4{};
    const auto put = [&a](const char* name) { Put(name, std::exchange(a, G4x4{})); };
    Scale4x4(i.x, a, &g_err);
    put("Scale4x4");
    Scale4x4(i.x, i.p, a, &g_err);
    put("Scale4x4 c");
    Scale4x4(i.x, i.y, 3, a, &g_err);
    put("Scale4x4 xyz");
    Scale4x4(i.x, i.y, 3, i.p, a, &g_err);
    put("Scale4x4 xyz c");
    Rotate4x4(0.6, 0.8, i.u, a, &g_err);
    put("Rotate4x4");
    Rotate4x4(i.x, 0.8, i.u, i.p, a, &g_err);
    put("Rotate4x4 p");
    Reflect4x4(i.u, a, &g_err);
    put("Reflect4x4");
    Reflect4x4(i.u, i.p, a, &g_err);
    put("Reflect4x4 p");
    Translate4x4(i.v, a, &g_err);
    put("Translate4x4");
    Coordinate4x4(i.p, i.u, i.n, a, &g_err);
    put("Coordinate4x4");
}

void RunBoxes(const Inputs& i) {
    Put("BuildBox point", BuildBox(i.p));
    Put("BuildBox numbers", BuildBox(i.x, i.y, 1, i.y, i.x, 2));
    Put("BuildBox corners", BuildBox(i.p, i.q));
    std::array<GPosition, 5> points = i.profile;
    Put("BuildBox points", BuildBox(i.index, points.data()));
    Put("GBox []", i.box[i.index]);
    Put("GBox::IsNull", i.box.IsNull());
    Put("GBox::IsEqual", i.box.IsEqual(i.other));
    GBox a = i.box;
    GBox b = i.other;
    Put("GBox::IsIntersectTol", a.IsIntersectTol(b, i.x));
    Put("GBox >> GPosition", i.box >> i.p);
    Put("GBox >> GBox", i.box >> i.other);
    Put("GBox << GBox", i.box << i.other);
    Put("GPosition << GBox", i.q << i.box);
    Put("GBox +=", a += i.v);
    Put("GBox -=", a -= i.w);
    Put("GBox * double", i.box * i.x);
    Put("double * GBox", i.x * i.box);
    Put("GBox / double", i.box / i.x);
    Put("GBox |", i.box | i.other);
    Put("GBox &", i.box & i.other);
    Put("GBox |=", a |= b);
    Put("GBox &=", a &= b);
    Put("GBox *=", b *= i.x);
    Put("GBox /=", b /= i.y);
    std::array<GPosition, 8> corners;
    i.box.GiveCorners(corners.data());
    Put("GBox::GiveCorners", corners);
    Put("GBox * GMatrix", i.box * i.m);
    PutInPlace("GBox *= GMatrix", i.box, i.k);
    Put("GMatrix * GBox", i.m * i.box);
    Put("GBox * GTransf", i.box * i.t);
    PutInPlace("GBox *= GTransf", i.box, i.s);
    Put("GTransf * GBox", i.t * i.box);
    Put("GBox * G4x4", i.box * i.a);
    Put("G4x4 * GBox", i.a * i.box);
    PutInPlace("GBox *= G4x4", i.box, i.b);
    a = i.box;
    Put("GBox::ClipWPlane", a.ClipWPlane(i.v.m_x, i.v.m_y, i.v.m_z, i.x));
    Put("GBox::ClipWPlane box", a);
}

void RunClipVolumes(const Inputs& i) {
    const GUnitVector normals[] = {i.u, i.n, i.u, i.n, i.u, i.n};
    PutVolume("BuildClipVolume points", BuildClipVolume(i.index, i.profile.data(), normals));
    PutVolume("BuildClipVolume values", BuildClipVolume(i.index, i.a.m_matrix));
    GClipVolume volume = i.Volume();
    int result;
    IsPtInClipVolume(volume, i.p, &result, &g_err);
    Put("IsPtInClipVolume", result);
    Put("GClipVolume && GBox", volume && i.other);
    Put("GClipVolume >> GBox", volume >> i.other);
    PutVolume("GClipVolume + GVector", volume + i.v);
    PutVolume("GClipVolume - GVector", volume - i.v);
    PutVolume("GClipVolume * GMatrix", volume * i.m);
    PutVolume("GMatrix * GClipVolume", i.m * volume);
    PutVolume("GClipVolume * GTransf", volume * i.t);
    PutVolume("GClipVolume * double", volume * i.x);
    PutVolume("GClipVolume / double", volume / i.x);
    Put("ClipVolumeRange", ClipVolumeRange(volume));
    PutVolume("GClipVolume +=", volume += i.v);
    PutVolume("GClipVolume -=", volume -= i.w);
    PutVolume("GClipVolume *= GMatrix", volume *= i.k);
    PutVolume("GClipVolume *= GTransf", volume *= i.t);
    PutVolume("GClipVolume *= double", volume *= i.x);
    PutVolume("GClipVolume /= double", volume /= i.y);
}

void RunBoreLines(const Inputs& i) {
    Put("BuildBoreLine", BuildBoreLine(i.p, i.u, i.x, i.y, i.tol));
    Put("BuildBoreLine infinite", BuildBoreLine(i.p, i.u));
    Put("GBoreLine::Evaluate q", i.l.Evaluate(i.p));
    Put("GBoreLine::Evaluate t", i.l.Evaluate(i.x));
    Put("GBoreLine::IsEqual", i.l.IsEqual(i.o));
    Put("GBoreLine::IsNull", i.l.IsNull());
    Put("GBoreLine >> GPosition", i.l >> i.p);
    Put("GBoreLine >> double", i.l >> i.x);
    Put("GBoreLine + GVector", i.l + i.v);
    Put("GBoreLine - GVector", i.l - i.v);
    Put("GBoreLine * double", i.l * i.x);
    Put("GBoreLine / double", i.l / i.x);
    GBoreLine l = i.l;
    Put("GBoreLine += GVector", l += i.v);
    Put("GBoreLine -= GVector", l -= i.w);
    Put("GBoreLine *= double", l *= i.x);
    Put("GBoreLine /= double", l /= i.y);
    l.MakeInfinite();
    Put("GBoreLine::MakeInfinite", l);
    Put("GBoreLine::IsInfinite", l.IsInfinite());
    Put("BoreLineRange", BoreLineRange(i.l));
    Put("GBoreLine * GMatrix", i.l * i.m);
    PutInPlace("GBoreLine *= GMatrix", i.l, i.m);
    Put("GMatrix * GBoreLine", i.m * i.l);
    Put("GBoreLine * GTransf", i.l * i.t);
    PutInPlace("GBoreLine *= GTransf", i.l, i.t);
    Put("GBoreLine * G4x4", i.l * i.a);
    Put("G4x4 * GBoreLine", i.a * i.l);
    PutInPlace("GBoreLine *= G4x4", i.l, i.b);
    l = i.l;
    Put("GBoreLine::ClipWPlane", l.ClipWPlane(i.v.m_x, i.v.m_y, i.v.m_z, i.x));
    Put("GBoreLine::ClipWPlane line", l);
    Put("GBoreLine && GBox", i.l && i.box);
    Put("GBoreLine & GBox", i.l & i.box);
    GBoreCone cone;
    BuildBoreCone(i.l, i.p, cone, &g_err);
    Put("BoreConeRange", BoreConeRange(cone));
    Put("GBoreCone *= GTransf", cone *= i.t);
    Put("GBoreCone *= G4x4", cone *= i.b);
}

void RunProfiles(const Inputs& i) {
    std::array<GPosition, 5> room = {};
    std::array<GPosition, 5> source = i.profile;
    GPtFence fence = i.Fence(room);
    BuildPtFence(5, source.data(), i.n, i.x, i.y, fence, &g_err);
    PutFence("BuildPtFence", fence, room);
    fence = i.Fence(source);
    std::array<GPosition, 6> points;
    std::array<GUnitVector, 6> normals;
    fence.FindPlanes(points.data(), normals.data());
    Put("GPtFence::FindPlanes points", points);
    Put("GPtFence::FindPlanes normals", normals);
    int inside;
    IsPtInPtFence(fence, points.data(), normals.data(), i.p, &inside, &g_err);
    Put("IsPtInPtFence", inside);
    Put("GPtFence && GBox", fence && i.box);
    Put("PtFenceRange", PtFenceRange(fence));
    GPtFrustum frustum = {i.Fence(room), i.q};
    BuildPtFrustum(fence, i.p, frustum, &g_err);
    Put("PtFrustumRange", PtFrustumRange(frustum));
    frustum *= i.t;
    PutFence("GPtFrustum *= GTransf", frustum.m_fence, room);
    frustum *= i.b;
    PutFence("GPtFrustum *= G4x4", frustum.m_fence, room);
    Put("GPtFrustum *= G4x4 eye", frustum.m_eye);

    room = {};
    GRtPrism prism = {i.t, room.data(), 0, 0};
    BuildRtPrism(i.s, source.data(), 5, i.x, prism, &g_err);
    PutPrism("BuildRtPrism own", prism, room);
    prism *= i.t;
    PutPrism("GRtPrism *= GTransf", prism, room);
    prism *= i.a;
    PutPrism("GRtPrism *= G4x4", prism, room);
    BuildRtPrism(source.data(), 5, i.u, i.x, i.y, prism, &g_err);
    PutPrism("BuildRtPrism world", prism, room);
    Put("RtPrismRange", RtPrismRange(prism));
}

// The planar records are cut from those of space by hand: Convert2d is itself under test.
struct PlanarInputs {
    GVector2d v, w;
    GUnitVector2d u, n;
    GPosition2d p, q;
    GMatrix2d m, k;
    GTransf2d t, s;
    GBox2d box, other;

    explicit PlanarInputs(const Inputs& i)
        : v{i.v.m_x, i.v.m_y},
          w{i.w.m_x, i.w.m_y},
          u{i.u.m_x, i.u.m_y},
          n{i.n.m_x, i.n.m_y},
          p{i.p.m_x, i.p.m_y},
          q{i.q.m_x, i.q.m_y},
          m{{{i.m.m_elements[0][0], i.m.m_elements[0][1]},
             {i.m.m_elements[1][0], i.m.m_elements[1][1]}}},
          k(Rotation2d(i.u.m_x, i.u.m_y)),
          t{m, v, i.x, 1, 0, static_cast<unsigned char>(i.index % 2)},
          s{k, w, i.y, 1, 1, 0},
          box{{i.box.m_low.m_x, i.box.m_low.m_y}, {i.box.m_high.m_x, i.box.m_high.m_y}},
          other{{i.other.m_low.m_x, i.other.m_low.m_y}, {i.other.m_high.m_x, i.other.m_high.m_y}} {
        g_messages = Hash();
    }
};

GTransf2d WithoutRotationFlag(GTransf2d t) {
    t.m_hasRotation = 0;
    return t;
}

void RunPlanarPoints(const Inputs& i) {
    const PlanarInputs j(i);
    Put("GVector2d []", j.v[i.index]);
    Put("GUnitVector2d []", j.u[i.index]);
    Put("GUnitVector2d GVector2d", GVector2d(j.u));
    Put("GPosition2d []", j.p[i.index]);
    Put("GVector2d::IsNull", j.v.IsNull());
    Put("GVector2d::IsNull tol", j.v.IsNull(i.x));
    Put("GVector2d::IsEqual", j.v.IsEqual(j.w));
    Put("GVector2d::IsColinear", j.v.IsColinear(j.w));
    Put("GVector2d::IsOrthogonal", j.v.IsOrthogonal(j.w));
    Put("GVector2d::GetLength", j.v.GetLength());
    GVector2d v = j.v;
    Put("GVector2d +=", v += j.w);
    Put("GVector2d -=", v -= j.u);
    Put("GVector2d *= double", v *= i.x);
    Put("GVector2d /= double", v /= i.y);
    Put("GVector2d /", j.v / i.x);
    Put("GVector2d %", j.v % j.w);
    Put("GVector2d *", j.v * j.w);
    GUnitVector2d u = j.u;
    Put("GUnitVector2d +=", u += j.v);
    Put("GUnitVector2d -=", u -= j.w);
    Put("BuildUnitVector2d", BuildUnitVector2d(i.x, i.y));
    Put("BuildUnitVector2d tol", BuildUnitVector2d(i.x, i.y, i.v.m_x, &g_err));
    Put("BuildUnitVector2d points", BuildUnitVector2d(j.p, j.q));
    Put("GetPerpVector2d", GetPerpVector2d(j.u));
    Put("GPosition2d::IsEqual", j.p.IsEqual(j.q));
    Put("GPosition2d::IsNull", j.p.IsNull());
    Put("Interpolate 2d", Interpolate(i.x, j.p, j.q));
    Put("GPosition2d + GVector2d", j.p + j.v);
    Put("GVector2d + GPosition2d", j.v + j.p);
    Put("GPosition2d - GVector2d", j.p - j.v);
    GPosition2d p = j.p;
    Put("GPosition2d +=", p += j.v);
    Put("GPosition2d -=", p -= j.w);
    Put("GPosition2d % GVector2d", j.p % j.v);
    Put("GVector2d % GPosition2d", j.v % j.p);
    Put("GDistance 2d", GDistance(j.p, j.q));
    Put("GVector::Convert2d", i.v.Convert2d());
    Put("GUnitVector::Convert2d", i.u.Convert2d());
    Put("GPosition::Convert2d", i.p.Convert2d());
    GVector v3;
    v3.Convert3d(j.v);
    Put("GVector::Convert3d", v3);
    GUnitVector u3;
    u3.Convert3d(j.u);
    Put("GUnitVector::Convert3d", u3);
    GPosition p3;
    p3.Convert3d(j.p);
    Put("GPosition::Convert3d", p3);
}

void RunPlanarMaps(const Inputs& i) {
    const PlanarInputs j(i);
    Put("BuildMatrix2d rows", BuildMatrix2d(j.v, j.w, 0));
    Put("BuildMatrix2d columns", BuildMatrix2d(j.u, j.n, 1));
    Put("GMatrix2d []", j.m[i.index]);
    Put("GMatrix2d::IsEqual", j.m.IsEqual(j.k));
    Put("GMatrix2d::IsNull", j.m.IsNull());
    Put("GMatrix2d::IsIdentity", j.k.IsIdentity());
    Put("GMatrix2d::IsEuclidean", j.k.IsEuclidean());
    Put("GetDeterminant 2d", GetDeterminant(j.m));
    Put("GMatrix2d::Transpose", j.m.Transpose());
    Put("GMatrix2d *", j.m * j.k);
    PutInPlace("GMatrix2d *=", j.m, j.k);
    Put("Rotation2d", Rotation2d(i.x, i.y));
    Put("Reflection2d", Reflection2d(j.u));
    GMatrix2d out;
    MakeOrthogonal(j.m, out, &g_err);
    Put("MakeOrthogonal 2d", out);
    Put("BuildTransf2d", BuildTransf2d(j.m, j.v, i.x, i.digits, 1, 300));
    Put("GTransf2d::IsNull", j.t.IsNull());
    Put("GTransf2d::IsIdentity", j.t.IsIdentity());
    Put("GTransf2d::IsEqual", j.t.IsEqual(j.s));
    Put("GTransf2d::IsInvertible", j.s.IsInvertible());
    Put("GTransf2d::Inverse", j.t.Inverse());
    Put("GTransf2d *", WithoutRotationFlag(j.t * j.s));
    GTransf2d t = j.t;
    Put("GTransf2d *=", WithoutRotationFlag(t *= j.s));
    Put("ScaleTransf2d", ScaleTransf2d(i.x));
    Put("ScaleTransf2d c", ScaleTransf2d(i.x, j.p));
    Put("RotateTransf2d", RotateTransf2d(i.x, i.y));
    Put("RotateTransf2d p", RotateTransf2d(i.x, i.y, j.p));
    Put("ReflectTransf2d", ReflectTransf2d(j.u));
    Put("ReflectTransf2d p", ReflectTransf2d(j.u, j.p));
    Put("TranslateTransf2d", TranslateTransf2d(j.v));
    Put("CoordinateTransf2d", CoordinateTransf2d(j.p, j.u, j.n));
    G4x4 a = i.a;
    a.m_matrix[0] = a.m_matrix[5] = i.x;
    a.m_matrix[1] = -(a.m_matrix[4] = i.y);
    a.m_matrix[8] = a.m_matrix[9] = i.tol * i.tol;
    Put("ConvertG4x4ToGTransf2d", ConvertG4x4ToGTransf2d(a, t));
    Put("ConvertG4x4ToGTransf2d t", WithoutRotationFlag(t));
    Put("GTransf::Convert2d", i.t.Convert2d());
    GTransf t3;
    t3.Convert3d(j.t);
    Put("GTransf::Convert3d", t3);
}

void RunPlanarMapping(const Inputs& i) {
    const PlanarInputs j(i);
    Put("GPosition2d * GMatrix2d", j.p * j.m);
    Put("GMatrix2d * GPosition2d", j.m * j.p);
    PutInPlace("GPosition2d *= GMatrix2d", j.p, j.m);
    Put("GPosition2d * GTransf2d", j.p * j.t);
    PutInPlace("GPosition2d *= GTransf2d", j.p, j.t);
    Put("GPosition2d ^ GTransf2d", j.p ^ j.t);
    Put("G4x4 * GPosition2d", i.a * j.p);
    Put("GPosition2d * G4x4", j.p * i.a);
    PutInPlace("GPosition2d *= G4x4", j.p, i.a);
    Put("GVector2d * GMatrix2d", j.v * j.m);
    Put("GMatrix2d * GVector2d", j.m * j.v);
    PutInPlace("GVector2d *= GMatrix2d", j.v, j.m);
    Put("GVector2d * GTransf2d", j.v * j.t);
    PutInPlace("GVector2d *= GTransf2d", j.v, j.t);
    Put("GVector2d ^ GTransf2d", j.v ^ j.t);
    Put("GUnitVector2d * GMatrix2d", j.u * j.m);
    Put("GMatrix2d * GUnitVector2d", j.m * j.u);
    PutInPlace("GUnitVector2d *= GMatrix2d", j.u, j.m);
    Put("GUnitVector2d * GTransf2d", j.u * j.t);
    PutInPlace("GUnitVector2d *= GTransf2d", j.u, j.t);
    Put("GUnitVector2d ^ GTransf2d", j.u ^ j.t);
}

void RunPlanarBoxes(const Inputs& i) {
    const PlanarInputs j(i);
    Put("BuildBox2d numbers", BuildBox2d(i.x, i.y));
    Put("BuildBox2d point", BuildBox2d(j.p, i.digits));
    Put("BuildBox2d four numbers", BuildBox2d(i.x, i.y, i.y, i.x));
    Put("BuildBox2d corners", BuildBox2d(j.p, j.q));
    std::array<GPosition2d, 5> points = {j.p, j.q, {i.x, i.y}, {i.y, i.x}, {i.x, i.tol}};
    Put("BuildBox2d points", BuildBox2d(i.index, points.data()));
    Put("GBox2d []", j.box[i.index]);
    Put("GBox2d::IsNull", j.box.IsNull());
    Put("GBox2d::IsEqual", j.box.IsEqual(j.other));
    GBox2d a = j.box;
    GBox2d b = j.other;
    Put("GBox2d::IsIntersectTol", a.IsIntersectTol(b, i.x));
    Put("GBox2d >> GPosition2d", j.box >> j.p);
    Put("GBox2d >> GBox2d", j.box >> j.other);
    Put("GBox2d << GBox2d", j.box << j.other);
    Put("GPosition2d << GBox2d", j.q << j.box);
    Put("GBox2d +=", a += j.v);
    Put("GBox2d -=", a -= j.w);
    Put("GBox2d * double", j.box * i.x);
    Put("double * GBox2d", i.x * j.box);
    Put("GBox2d / double", j.box / i.x);
    Put("GBox2d |", j.box | j.other);
    Put("GBox2d &", j.box & j.other);
    Put("GBox2d |=", a |= b);
    Put("GBox2d &=", a &= b);
    Put("GBox2d *=", b *= i.x);
    Put("GBox2d /=", b /= i.y);
    std::array<GPosition2d, 4> corners;
    j.box.GiveCorners(corners.data());
    Put("GBox2d::GiveCorners", corners);
    Put("GBox2d * GMatrix2d", j.box * j.m);
    Put("GMatrix2d * GBox2d", j.m * j.box);
    PutInPlace("GBox2d *= GMatrix2d", j.box, j.k);
    Put("GBox2d * GTransf2d", j.box * j.t);
    PutInPlace("GBox2d *= GTransf2d", j.box, j.s);
    Put("GBox::Convert2d", i.box.Convert2d());
    GBox box3;
    box3.Convert3d(j.box);
    Put("GBox::Convert3d", box3);
}

void RunText(const Inputs& i) {
    const GPosition points[2] = {{i.x, i.y, 0.1}, {0.2, i.y, i.x}};
    const GUnitVector direction = {i.v.m_x, i.v.m_y, i.v.m_z};
    PutText("GPrint_to_File GBox", GBox{points[0], points[1]});
    PutText("GPrint_to_File GMatrix", i.m);
    PutText("GPrint_to_File G4x4", i.b);
    PutText("GPrint_to_File GTransf", BuildTransf(i.m, i.v, i.x, i.digits, 1, 255));
    const GBoreLine line = {i.p, direction, i.x, i.y, i.q.m_x};
    PutText("GPrint_to_File GBoreCone", GBoreCone{line, i.q});
    std::array<GPosition, 5> room = i.profile;
    const GPtFence fence = {room.size(), room.data(), direction, i.x, i.y};
    PutText("GPrint_to_File GPtFrustum", GPtFrustum{fence, i.q});
    char numbers[200];
    std::snprintf(numbers, sizeof numbers, "%.17g %d 3 x 4", i.tol, i.digits);
    PutRead("GRead_from_File GBox", numbers, i.box);
    PutRead("GRead_from_File GMatrix2d", numbers, GMatrix2d{{{i.y, i.x}, {i.x, i.y}}});
}

}  // namespace

int main() {
    Random random(1);
    for (int k = 0; k < kCases; ++k) {
        random.WantExtremes(k % 2 == 1);
        SetAssertHook(nullptr);
        const Inputs inputs(random);
        SetAssertHook(HashMessage);
        g_next_line = 0;
        for (const auto run :
             {RunKernel, RunValidity, RunPoints, RunMapping, RunMatrices, RunTransformations,
              RunHomogeneous, RunBoxes, RunClipVolumes, RunBoreLines, RunProfiles, RunPlanarPoints,
              RunPlanarMaps, RunPlanarMapping, RunPlanarBoxes, RunText}) {
            run(inputs);
        }
    }
    for (const auto& [name, hash] : g_lines) {
        std::printf("%-28s %016" PRIx64 "\n", name.c_str(), hash.Value());
    }
}
