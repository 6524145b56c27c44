// SPDX-License-Identifier: MIT

// Runs every operation that uses no angle function over the same random records, ordinary and
// extreme, and prints a line for each: its name and a hash over the bits of all that it returned,
// wrote and reported. Two builds that print the same lines compute the same bits.

#include "tests/support/records.h"

#include <cinttypes>
#include <cstdio>
#include <functional>
#include <string>
#include <type_traits>
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

Hash* g_hash = nullptr;

void HashMessage(const char* message) {
    for (; *message != '\0'; ++message) {
        g_hash->Add(static_cast<unsigned char>(*message));
    }
}

template <class Result>
void Put(const Result& result) {
    if constexpr (std::is_integral_v<Result>) {
        g_hash->Add(static_cast<std::uint64_t>(result));
    } else {
        for (const std::uint64_t bits : Bits(result)) {
            g_hash->Add(bits);
        }
    }
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

// Runs an operation that writes into an error code and returns or writes a record.
template <class Operation>
void PutWithError(Operation operation) {
    long err = 77;
    operation(&err);
    Put(err);
}

// The composition without its rotation flag, which an angle decides.
GTransf WithoutRotationFlag(GTransf t) {
    t.m_hasRotation = 0;
    return t;
}

template <class Record, class Operand>
void PutInPlace(Record record, const Operand& operand) {
    record *= operand;
    Put(record);
}

void PutVolume(const GClipVolume& volume) {
    Put(volume.m_planes);
    Put(int{volume.m_count});
}

void PutFence(const GPtFence& fence) {
    Put(fence.m_direction);
    Put(fence.m_front);
    Put(fence.m_back);
    for (unsigned long k = 0; k < fence.m_count; ++k) {
        Put(fence.m_points[k]);
    }
}

void PutPrism(const GRtPrism& prism) {
    Put(WithoutRotationFlag(prism.m_transf));
    Put(prism.m_height);
    for (unsigned long k = 0; k < prism.m_count; ++k) {
        Put(prism.m_points[k]);
    }
}

template <class Builder>
void PutBuilt(Builder builder) {
    G4x4 m = {};
    PutWithError([&](long* err) { builder(m, err); });
    Put(m);
}

using Operation = std::pair<const char*, void (*)(const Inputs&)>;

const std::vector<Operation> kOperations = {
    {"KVRoundValue",
     [](const Inputs& i) {
         double rounded;
         char text[40] = {};
         KVRoundValue(i.x, i.digits, &rounded, sizeof text, text);
         Put(rounded);
         HashMessage(text);
     }},
    {"SetDistanceTolerance", [](const Inputs& i) {
         PutWithError([&i](long* err) { SetDistanceTolerance(i.x, err); });
         PutWithError([](long* err) { SetDistanceTolerance(1e-6, err); });
     }},
    {"Gassert_valid u", [](const Inputs& i) { Gassert_valid(i.u); }},
    {"GVector []", [](const Inputs& i) { Put(i.v[i.index]); }},
    {"GUnitVector []", [](const Inputs& i) { Put(i.u[i.index]); }},
    {"GPosition []", [](const Inputs& i) { Put(i.p[i.index]); }},
    {"GVector::IsNull", [](const Inputs& i) { Put(i.v.IsNull()); }},
    {"GVector::IsNull tol", [](const Inputs& i) { Put(i.v.IsNull(i.x)); }},
    {"GUnitVector::IsNull", [](const Inputs& i) { Put(i.u.IsNull()); }},
    {"GVector::IsEqual", [](const Inputs& i) { Put(i.v.IsEqual(i.w)); }},
    {"GUnitVector::IsEqual", [](const Inputs& i) { Put(i.u.IsEqual(i.n)); }},
    {"GVector::IsColinear", [](const Inputs& i) { Put(i.v.IsColinear(i.w)); }},
    {"GVector::IsOrthogonal", [](const Inputs& i) { Put(i.v.IsOrthogonal(i.w)); }},
    {"GUnitVector::IsColinear", [](const Inputs& i) { Put(i.u.IsColinear(i.w)); }},
    {"GUnitVector::IsOrthogonal", [](const Inputs& i) { Put(i.u.IsOrthogonal(i.n)); }},
    {"GVector /", [](const Inputs& i) { Put(i.v / i.x); }},
    {"GUnitVector +=", [](const Inputs& i) { GUnitVector u = i.u; Put(u += i.v); }},
    {"GUnitVector -=", [](const Inputs& i) { GUnitVector u = i.u; Put(u -= i.v); }},
    {"BuildUnitVector", [](const Inputs& i) { Put(BuildUnitVector(i.x, i.y, i.v.m_x)); }},
    {"BuildUnitVector tol",
     [](const Inputs& i) {
         PutWithError([&i](long* err) { Put(BuildUnitVector(i.x, i.y, i.v.m_x, i.w.m_x, err)); });
     }},
    {"BuildUnitVector points", [](const Inputs& i) { Put(BuildUnitVector(i.p, i.q)); }},
    {"GetPerpVector", [](const Inputs& i) { Put(GetPerpVector(i.u)); }},
    {"ModifyOrthoVector v", [](const Inputs& i) { GVector b = i.w; ModifyOrthoVector(i.v, b); Put(b); }},
    {"ModifyOrthoVector u",
     [](const Inputs& i) { GUnitVector b = i.u; ModifyOrthoVector(i.v, b); Put(b); }},
    {"GPosition::IsEqual", [](const Inputs& i) { Put(i.p.IsEqual(i.q)); }},
    {"GPosition::IsNull", [](const Inputs& i) { Put(i.p.IsNull()); }},
    {"Interpolate", [](const Inputs& i) { Put(Interpolate(i.x, i.p, i.q)); }},
    {"GPosition *= GMatrix", [](const Inputs& i) { PutInPlace(i.p, i.m); }},
    {"GPosition * GTransf", [](const Inputs& i) { Put(i.p * i.t); }},
    {"GPosition *= GTransf", [](const Inputs& i) { PutInPlace(i.p, i.t); }},
    {"GPosition ^ GTransf", [](const Inputs& i) { Put(i.p ^ i.t); }},
    {"G4x4 * GPosition", [](const Inputs& i) { Put(i.a * i.p); }},
    {"GPosition * G4x4", [](const Inputs& i) { Put(i.p * i.a); }},
    {"GPosition *= G4x4", [](const Inputs& i) { PutInPlace(i.p, i.a); }},
    {"GVector *= GMatrix", [](const Inputs& i) { PutInPlace(i.v, i.m); }},
    {"GVector * GTransf", [](const Inputs& i) { Put(i.v * i.t); }},
    {"GVector *= GTransf", [](const Inputs& i) { PutInPlace(i.v, i.t); }},
    {"GVector ^ GTransf", [](const Inputs& i) { Put(i.v ^ i.t); }},
    {"G4x4 * GVector", [](const Inputs& i) { Put(i.a * i.v); }},
    {"GVector * G4x4", [](const Inputs& i) { Put(i.v * i.a); }},
    {"GVector *= G4x4", [](const Inputs& i) { PutInPlace(i.v, i.a); }},
    {"GUnitVector * GMatrix", [](const Inputs& i) { Put(i.u * i.m); }},
    {"GMatrix * GUnitVector", [](const Inputs& i) { Put(i.m * i.u); }},
    {"GUnitVector *= GMatrix", [](const Inputs& i) { PutInPlace(i.u, i.m); }},
    {"GUnitVector * GTransf", [](const Inputs& i) { Put(i.u * i.t); }},
    {"GUnitVector *= GTransf", [](const Inputs& i) { PutInPlace(i.u, i.t); }},
    {"GUnitVector ^ GTransf", [](const Inputs& i) { Put(i.u ^ i.t); }},
    {"GUnitVector * G4x4", [](const Inputs& i) { Put(i.u * i.a); }},
    {"G4x4 * GUnitVector", [](const Inputs& i) { Put(i.a * i.u); }},
    {"GUnitVector *= G4x4", [](const Inputs& i) { PutInPlace(i.u, i.a); }},
    {"BuildMatrix rows", [](const Inputs& i) { Put(BuildMatrix(i.v, i.w, i.v, 0)); }},
    {"BuildMatrix columns", [](const Inputs& i) { Put(BuildMatrix(i.u, i.n, i.u, 1)); }},
    {"GMatrix []", [](const Inputs& i) { Put(i.m[i.index]); }},
    {"GMatrix::IsEqual", [](const Inputs& i) { Put(i.m.IsEqual(i.k)); }},
    {"GMatrix::IsNull", [](const Inputs& i) { Put(i.m.IsNull()); }},
    {"GMatrix::IsIdentity", [](const Inputs& i) { Put(i.m.IsIdentity()); }},
    {"GMatrix::IsEuclidean", [](const Inputs& i) { Put(i.k.IsEuclidean()); }},
    {"GetDeterminant", [](const Inputs& i) { Put(GetDeterminant(i.m)); }},
    {"GMatrix::Transpose", [](const Inputs& i) { Put(i.m.Transpose()); }},
    {"GMatrix *", [](const Inputs& i) { Put(i.m * i.k); }},
    {"GMatrix *=", [](const Inputs& i) { PutInPlace(i.m, i.k); }},
    {"Rotation", [](const Inputs& i) { Put(Rotation(i.x, i.y, i.u)); }},
    {"Reflection", [](const Inputs& i) { Put(Reflection(i.u)); }},
    {"MakeOrthogonal",
     [](const Inputs& i) {
         GMatrix out;
         PutWithError([&](long* err) { MakeOrthogonal(i.m, out, err); });
         Put(out);
     }},
    {"MakeOrthogonalIt",
     [](const Inputs& i) {
         GMatrix out = i.k;
         out.m_elements[1][2] += i.tol;
         PutWithError([&](long* err) { MakeOrthogonalIt(out, out, err); });
         Put(out);
     }},
    {"CheckOrthogonal",
     [](const Inputs& i) {
         double errors[2];
         CheckOrthogonal(i.m, &errors[0], &errors[1]);
         Put(errors[0]);
         Put(errors[1]);
     }},
    {"BuildTransf", [](const Inputs& i) { Put(BuildTransf(i.m, i.v, i.x, i.digits, 1, 300)); }},
    {"GTransf::IsNull", [](const Inputs& i) { Put(i.t.IsNull()); }},
    {"GTransf::IsIdentity", [](const Inputs& i) { Put(i.t.IsIdentity()); }},
    {"GTransf::IsEqual", [](const Inputs& i) { Put(i.t.IsEqual(i.s)); }},
    {"GTransf::IsInvertible", [](const Inputs& i) { Put(i.t.IsInvertible()); }},
    {"GTransf::Inverse", [](const Inputs& i) { Put(i.t.Inverse()); }},
    {"GTransf *", [](const Inputs& i) { Put(WithoutRotationFlag(i.t * i.s)); }},
    {"GTransf *=",
     [](const Inputs& i) { GTransf t = i.t; Put(WithoutRotationFlag(t *= i.s)); }},
    {"ScaleTransf", [](const Inputs& i) { Put(ScaleTransf(i.x)); }},
    {"ScaleTransf c", [](const Inputs& i) { Put(ScaleTransf(i.x, i.p)); }},
    {"RotateTransf", [](const Inputs& i) { Put(RotateTransf(i.x, i.y, i.u)); }},
    {"RotateTransf p", [](const Inputs& i) { Put(RotateTransf(i.x, i.y, i.u, i.p)); }},
    {"ReflectTransf", [](const Inputs& i) { Put(ReflectTransf(i.u)); }},
    {"ReflectTransf p", [](const Inputs& i) { Put(ReflectTransf(i.u, i.p)); }},
    {"TranslateTransf", [](const Inputs& i) { Put(TranslateTransf(i.v)); }},
    {"CoordinateTransf x y", [](const Inputs& i) { Put(CoordinateTransf(i.p, i.u, i.n)); }},
    {"CoordinateTransf z", [](const Inputs& i) { Put(CoordinateTransf(i.p, i.u)); }},
    {"OldToNewTransf",
     [](const Inputs& i) {
         GTransf out = i.t;
         PutWithError([&](long* err) { OldToNewTransf(i.p, i.u, i.n, i.q, i.u, i.n, out, err); });
         Put(out);
     }},
    {"Build4x4", [](const Inputs& i) { Put(Build4x4(i.a.m_matrix)); }},
    {"G4x4 = GTransf", [](const Inputs& i) { G4x4 a; a = i.t; Put(a); }},
    {"G4x4 *", [](const Inputs& i) { Put(i.a * i.b); }},
    {"G4x4 * GTransf", [](const Inputs& i) { Put(i.a * i.t); }},
    {"GTransf * G4x4", [](const Inputs& i) { Put(i.t * i.a); }},
    {"G4x4 *=", [](const Inputs& i) { PutInPlace(i.a, i.b); }},
    {"G4x4 *= GTransf", [](const Inputs& i) { PutInPlace(i.a, i.t); }},
    {"G4x4::Inverse", [](const Inputs& i) { Put(i.a.Inverse()); }},
    {"G4x4::IsEqual", [](const Inputs& i) { Put(i.a.IsEqual(i.b)); }},
    {"G4x4::IsInvertible", [](const Inputs& i) { Put(i.b.IsInvertible()); }},
    {"G4x4::IsValid", [](const Inputs& i) { Put(i.a.IsValid()); }},
    {"G4x4::HasReflection", [](const Inputs& i) { Put(i.a.HasReflection()); }},
    {"ConvertG4x4ToGTransf",
     [](const Inputs& i) {
         GTransf t = i.t;
         G4x4 a;
         a = i.s;
         a.m_matrix[4] += i.tol * i.tol;
         Put(ConvertG4x4ToGTransf(a, t));
         Put(WithoutRotationFlag(t));
     }},
    {"GTransf = G4x4", [](const Inputs& i) { GTransf t; t = i.b; Put(WithoutRotationFlag(t)); }},
    {"BuildBox point", [](const Inputs& i) { Put(BuildBox(i.p)); }},
    {"BuildBox numbers", [](const Inputs& i) { Put(BuildBox(i.x, i.y, 1, i.y, i.x, 2)); }},
    {"BuildBox corners", [](const Inputs& i) { Put(BuildBox(i.p, i.q)); }},
    {"BuildBox points",
     [](const Inputs& i) {
         GPosition points[5] = {i.p, i.q, i.box.m_low, i.box.m_high, i.other.m_low};
         Put(BuildBox(i.index, points));
     }},
    {"GBox []", [](const Inputs& i) { Put(i.box[i.index]); }},
    {"GBox::IsNull", [](const Inputs& i) { Put(i.box.IsNull()); }},
    {"GBox::IsEqual", [](const Inputs& i) { Put(i.box.IsEqual(i.other)); }},
    {"GBox::IsIntersectTol",
     [](const Inputs& i) { GBox a = i.box; GBox b = i.other; Put(a.IsIntersectTol(b, i.x)); }},
    {"GBox >> GPosition", [](const Inputs& i) { Put(i.box >> i.p); }},
    {"GBox >> GBox", [](const Inputs& i) { Put(i.box >> i.other); }},
    {"GBox << GBox", [](const Inputs& i) { Put(i.box << i.other); }},
    {"GPosition << GBox", [](const Inputs& i) { Put(i.q << i.box); }},
    {"GBox += -=", [](const Inputs& i) { GBox b = i.box; b += i.v; b -= i.w; Put(b); }},
    {"GBox * double", [](const Inputs& i) { Put(i.box * i.x); }},
    {"double * GBox", [](const Inputs& i) { Put(i.x * i.box); }},
    {"GBox / double", [](const Inputs& i) { Put(i.box / i.x); }},
    {"GBox |", [](const Inputs& i) { Put(i.box | i.other); }},
    {"GBox &", [](const Inputs& i) { Put(i.box & i.other); }},
    {"GBox |= &=", [](const Inputs& i) { GBox b = i.box; b |= i.other; b &= i.box; Put(b); }},
    {"GBox *= /=", [](const Inputs& i) { GBox b = i.box; b *= i.x; b /= i.y; Put(b); }},
    {"GBox::GiveCorners",
     [](const Inputs& i) {
         std::array<GPosition, 8> corners;
         i.box.GiveCorners(corners.data());
         Put(corners);
     }},
    {"BuildBoreLine", [](const Inputs& i) { Put(BuildBoreLine(i.p, i.u, i.x, i.y, i.tol)); }},
    {"BuildBoreLine infinite", [](const Inputs& i) { Put(BuildBoreLine(i.p, i.u)); }},
    {"GBoreLine::Evaluate q", [](const Inputs& i) { Put(i.l.Evaluate(i.p)); }},
    {"GBoreLine::Evaluate t", [](const Inputs& i) { Put(i.l.Evaluate(i.x)); }},
    {"GBoreLine::MakeInfinite",
     [](const Inputs& i) { GBoreLine l = i.l; l.MakeInfinite(); Put(l); Put(l.IsInfinite()); }},
    {"GBoreLine::IsEqual", [](const Inputs& i) { Put(i.l.IsEqual(i.o)); }},
    {"GBoreLine::IsNull", [](const Inputs& i) { Put(i.l.IsNull()); }},
    {"GBoreLine >> GPosition", [](const Inputs& i) { Put(i.l >> i.p); }},
    {"GBoreLine >> double", [](const Inputs& i) { Put(i.l >> i.x); }},
    {"GBoreLine + - GVector", [](const Inputs& i) { Put(i.l + i.v); Put(i.l - i.v); }},
    {"GBoreLine += -=", [](const Inputs& i) { GBoreLine l = i.l; l += i.v; l -= i.w; Put(l); }},
    {"GBoreLine * double", [](const Inputs& i) { Put(i.l * i.x); PutInPlace(i.l, i.x); }},
    {"GBoreLine / double", [](const Inputs& i) { GBoreLine l = i.l; Put(l / i.x); Put(l /= i.y); }},
    {"BoreLineRange", [](const Inputs& i) { Put(BoreLineRange(i.l)); }},
    {"GBoreLine * GMatrix", [](const Inputs& i) { Put(i.l * i.m); PutInPlace(i.l, i.m); }},
    {"GMatrix * GBoreLine", [](const Inputs& i) { Put(i.m * i.l); }},
    {"GBoreLine * GTransf", [](const Inputs& i) { Put(i.l * i.t); PutInPlace(i.l, i.t); }},
    {"GBoreLine * G4x4", [](const Inputs& i) { Put(i.l * i.a); }},
    {"G4x4 * GBoreLine", [](const Inputs& i) { Put(i.a * i.l); PutInPlace(i.l, i.b); }},
    {"GBoreLine::ClipWPlane",
     [](const Inputs& i) {
         GBoreLine l = i.l;
         Put(l.ClipWPlane(i.v.m_x, i.v.m_y, i.v.m_z, i.x));
         Put(l);
     }},
    {"GBoreLine && GBox", [](const Inputs& i) { Put(i.l && i.box); Put(i.o && i.other); }},
    {"GBoreLine & GBox", [](const Inputs& i) { Put(i.l & i.box); }},
    {"GetMirrorPlaneNormal",
     [](const Inputs& i) {
         GUnitVector normal = {};
         GVector offset;
         Put(GetMirrorPlaneNormal(ReflectTransf(i.u, i.p), normal, offset));
         Put(normal);
         Put(offset);
     }},
    {"GTransfHealer",
     [](const Inputs& i) {
         GTransf t = i.t;
         t.m_matrix.m_elements[0][1] += i.tol;
         int healed = 77;
         PutWithError([&](long* err) { GTransfHealer(t, t, &healed, err); });
         Put(t);
         Put(healed);
     }},
    {"Scale4x4", [](const Inputs& i) { PutBuilt([&](G4x4& m, long* e) { Scale4x4(i.x, m, e); }); }},
    {"Scale4x4 c",
     [](const Inputs& i) { PutBuilt([&](G4x4& m, long* e) { Scale4x4(i.x, i.p, m, e); }); }},
    {"Scale4x4 xyz",
     [](const Inputs& i) { PutBuilt([&](G4x4& m, long* e) { Scale4x4(i.x, i.y, 3, m, e); }); }},
    {"Scale4x4 xyz c",
     [](const Inputs& i) { PutBuilt([&](G4x4& m, long* e) { Scale4x4(i.x, i.y, 3, i.p, m, e); }); }},
    {"Rotate4x4",
     [](const Inputs& i) { PutBuilt([&](G4x4& m, long* e) { Rotate4x4(0.6, 0.8, i.u, m, e); }); }},
    {"Rotate4x4 p",
     [](const Inputs& i) {
         PutBuilt([&](G4x4& m, long* e) { Rotate4x4(i.x, 0.8, i.u, i.p, m, e); });
         PutBuilt([&](G4x4& m, long* e) { Rotate4x4(0.6, 0.8, i.u, i.p, m, e); });
     }},
    {"Reflect4x4", [](const Inputs& i) { PutBuilt([&](G4x4& m, long* e) { Reflect4x4(i.u, m, e); }); }},
    {"Reflect4x4 p",
     [](const Inputs& i) { PutBuilt([&](G4x4& m, long* e) { Reflect4x4(i.u, i.p, m, e); }); }},
    {"Translate4x4",
     [](const Inputs& i) { PutBuilt([&](G4x4& m, long* e) { Translate4x4(i.v, m, e); }); }},
    {"Coordinate4x4",
     [](const Inputs& i) { PutBuilt([&](G4x4& m, long* e) { Coordinate4x4(i.p, i.u, i.n, m, e); }); }},
    {"GBox * GMatrix", [](const Inputs& i) { Put(i.box * i.m); PutInPlace(i.box, i.k); }},
    {"GMatrix * GBox", [](const Inputs& i) { Put(i.m * i.box); }},
    {"GBox * GTransf", [](const Inputs& i) { Put(i.box * i.t); PutInPlace(i.box, i.s); }},
    {"GTransf * GBox", [](const Inputs& i) { Put(i.t * i.box); }},
    {"GBox * G4x4", [](const Inputs& i) { Put(i.box * i.a); }},
    {"G4x4 * GBox", [](const Inputs& i) { Put(i.a * i.box); PutInPlace(i.box, i.b); }},
    {"GBox::ClipWPlane",
     [](const Inputs& i) {
         GBox box = i.box;
         Put(box.ClipWPlane(i.v.m_x, i.v.m_y, i.v.m_z, i.x));
         Put(box);
     }},
    {"BuildClipVolume points",
     [](const Inputs& i) {
         const GUnitVector normals[] = {i.u, i.n, i.u, i.n, i.u, i.n};
         PutVolume(BuildClipVolume(i.index + 1, i.profile.data(), normals));
     }},
    {"BuildClipVolume values",
     [](const Inputs& i) { PutVolume(BuildClipVolume(i.index, i.a.m_matrix)); }},
    {"IsPtInClipVolume",
     [](const Inputs& i) {
         int result;
         PutWithError([&](long* err) { IsPtInClipVolume(i.Volume(), i.p, &result, err); });
         Put(result);
     }},
    {"GClipVolume && GBox", [](const Inputs& i) { Put(i.Volume() && i.other); }},
    {"GClipVolume >> GBox", [](const Inputs& i) { Put(i.Volume() >> i.other); }},
    {"GClipVolume + GVector", [](const Inputs& i) { PutVolume(i.Volume() + i.v); }},
    {"GClipVolume - GVector", [](const Inputs& i) { PutVolume(i.Volume() - i.v); }},
    {"GClipVolume * GMatrix", [](const Inputs& i) { PutVolume(i.Volume() * i.m); }},
    {"GMatrix * GClipVolume", [](const Inputs& i) { PutVolume(i.m * i.Volume()); }},
    {"GClipVolume * GTransf", [](const Inputs& i) { PutVolume(i.Volume() * i.t); }},
    {"GClipVolume * double", [](const Inputs& i) { PutVolume(i.Volume() * i.x); }},
    {"GClipVolume / double",
     [](const Inputs& i) { GClipVolume v = i.Volume(); PutVolume(v / i.x); PutVolume(v /= i.x); }},
    {"ClipVolumeRange", [](const Inputs& i) { Put(ClipVolumeRange(i.Volume())); }},
    {"BuildPtFence",
     [](const Inputs& i) {
         std::array<GPosition, 5> room = {};
         GPtFence fence = i.Fence(room);
         PutWithError([&](long* err) {
             BuildPtFence(5, i.profile.data(), i.n, i.x, i.y, fence, err);
         });
         PutFence(fence);
     }},
    {"FindPlanes, IsPtInPtFence",
     [](const Inputs& i) {
         std::array<GPosition, 5> room = i.profile;
         GPosition points[6];
         GUnitVector normals[6];
         i.Fence(room).FindPlanes(points, normals);
         Put(points);
         Put(normals);
         int inside;
         PutWithError([&](long* err) {
             IsPtInPtFence(i.Fence(room), points, normals, i.p, &inside, err);
         });
         Put(inside);
     }},
    {"GPtFence && GBox",
     [](const Inputs& i) { std::array<GPosition, 5> room = i.profile; Put(i.Fence(room) && i.box); }},
    {"GPtFence *=",
     [](const Inputs& i) {
         std::array<GPosition, 5> room = i.profile;
         GPtFence fence = i.Fence(room);
         PutFence(fence *= i.t);
         PutFence(fence *= i.a);
     }},
    {"PtFenceRange",
     [](const Inputs& i) { std::array<GPosition, 5> room = i.profile; Put(PtFenceRange(i.Fence(room))); }},
    {"BuildPtFrustum, GPtFrustum *=",
     [](const Inputs& i) {
         std::array<GPosition, 5> source = i.profile;
         std::array<GPosition, 5> room = {};
         GPtFrustum frustum = {i.Fence(room), i.q};
         PutWithError([&](long* err) { BuildPtFrustum(i.Fence(source), i.p, frustum, err); });
         frustum *= i.t;
         PutFence(frustum.m_fence);
         frustum *= i.b;
         PutFence(frustum.m_fence);
         Put(frustum.m_eye);
     }},
    {"PtFrustumRange",
     [](const Inputs& i) {
         std::array<GPosition, 5> room = i.profile;
         Put(PtFrustumRange({i.Fence(room), i.p}));
     }},
    {"BuildRtPrism own, GRtPrism *=",
     [](const Inputs& i) {
         std::array<GPosition, 5> room = {};
         GRtPrism prism = {i.t, room.data(), 0, 0};
         PutWithError([&](long* err) { BuildRtPrism(i.s, i.profile.data(), 5, i.x, prism, err); });
         PutPrism(prism *= i.t);
         PutPrism(prism *= i.a);
     }},
    {"BuildRtPrism world, RtPrismRange",
     [](const Inputs& i) {
         std::array<GPosition, 5> room = i.profile;
         GRtPrism prism = {i.t, room.data(), 0, 0};
         PutWithError([&](long* err) { BuildRtPrism(room.data(), 5, i.u, i.x, i.y, prism, err); });
         PutPrism(prism);
         Put(RtPrismRange(prism));
     }},
    {"GBoreCone *=, BoreConeRange",
     [](const Inputs& i) {
         GBoreCone cone;
         PutWithError([&](long* err) { BuildBoreCone(i.l, i.p, cone, err); });
         Put(BoreConeRange(cone));
         Put(cone *= i.t);
         Put(cone *= i.b);
     }},
};

}  // namespace

int main() {
    std::vector<Hash> hashes(kOperations.size());
    Random random(1);
    for (int i = 0; i < kCases; ++i) {
        random.WantExtremes(i % 2 == 1);
        SetAssertHook(nullptr);
        const Inputs inputs(random);
        SetAssertHook(HashMessage);
        for (size_t k = 0; k < kOperations.size(); ++k) {
            g_hash = &hashes[k];
            kOperations[k].second(inputs);
        }
    }
    for (size_t k = 0; k < kOperations.size(); ++k) {
        std::printf("%-28s %016" PRIx64 "\n", kOperations[k].first, hashes[k].Value());
    }
}
