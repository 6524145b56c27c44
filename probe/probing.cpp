// SPDX-License-Identifier: MIT
#include "probe/probing.h"

#include <kvgeom/kvgeom.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

namespace kvprobe {
namespace {

// The factor by which a linear map stretches a length at most: the root of the largest eigenvalue
// of M M^T, bounded by its largest row sum (Gershgorin's theorem). Exact for similarities and for
// scalings along the axes.
double LargestStretch(const G4x4& a) {
    const double* const m = a.m_matrix;
    const GMatrix linear = {{{m[0], m[1], m[2]}, {m[4], m[5], m[6]}, {m[8], m[9], m[10]}}};
    const GMatrix gram = linear * linear.Transpose();
    double bound = 0;
    for (unsigned i = 0; i < 3; ++i) {
        const GVector row = gram[i];
        bound = std::max(bound, std::fabs(row.m_x) + std::fabs(row.m_y) + std::fabs(row.m_z));
    }
    return std::sqrt(bound);
}

G4x4 Transposed(const G4x4& a) {
    G4x4 result;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            result.m_matrix[4 * i + j] = a.m_matrix[4 * j + i];
        }
    }
    return result;
}

// The leg in the coordinates of the object.
GBoreLine CarryIntoObject(const GBoreLine& leg, const G4x4& placement) {
    GTransf similarity;
    if (ConvertG4x4ToGTransf(placement, similarity) == 0 && similarity.IsInvertible()) {
        return leg * similarity.Inverse();
    }
    // Of the two products with a G4x4, the one with the bore line first rebuilds it from the images
    // of its ends, which is right for any map; it reads the matrix in the column form. The radius
    // must cover what was the round tube in every direction.
    const G4x4 inverse = placement.Inverse();
    GBoreLine carried = leg * Transposed(inverse);
    carried.m_radius = std::max(carried.m_radius, leg.m_radius * LargestStretch(inverse));
    return carried;
}

std::optional<Hit> Test(const GBoreLine& leg, const Object& object) {
    const GBoreLine carried = CarryIntoObject(leg, object.placement);
    if (!(carried && object.box)) {
        return std::nullopt;
    }
    const GBoreLine cut = carried & object.box;
    const double one_end = leg.Evaluate(object.placement * cut.Evaluate(cut.m_back));
    const double other_end = leg.Evaluate(object.placement * cut.Evaluate(cut.m_front));
    // The cut spans the whole box: what lies beyond the ends of the leg isn't the leg's. Numbers
    // that left their range on the way (NaN) count as the ends.
    const double enters = std::min(one_end, other_end);
    const double leaves = std::max(one_end, other_end);
    return Hit{0, 0, enters > leg.m_back ? std::min(enters, leg.m_front) : leg.m_back,
               leaves < leg.m_front ? std::max(leaves, leg.m_back) : leg.m_front};
}

}  // namespace

std::vector<GBoreLine> Legs(const Arguments& arguments) {
    if (arguments.line) {
        GBoreLine line = BuildBoreLine(arguments.line->through, arguments.line->along);
        line.m_radius = arguments.radius;
        return {line};
    }
    std::vector<GBoreLine> legs;
    for (size_t i = 1; i < arguments.route.size(); ++i) {
        const GPosition& from = arguments.route[i - 1];
        const GPosition& to = arguments.route[i];
        legs.push_back(BuildBoreLine(from, BuildUnitVector(from, to), GDistance(from, to), 0.0,
                                     arguments.radius));
    }
    return legs;
}

std::vector<Hit> Probe(const std::vector<GBoreLine>& legs, const std::vector<Object>& objects) {
    std::vector<Hit> hits;
    for (size_t leg = 0; leg < legs.size(); ++leg) {
        const auto first_of_leg = static_cast<std::ptrdiff_t>(hits.size());
        for (size_t object = 0; object < objects.size(); ++object) {
            if (std::optional<Hit> hit = Test(legs[leg], objects[object])) {
                hit->leg = leg;
                hit->object = object;
                hits.push_back(*hit);
            }
        }
        std::stable_sort(hits.begin() + first_of_leg, hits.end(),
                         [](const Hit& a, const Hit& b) { return a.enters < b.enters; });
    }
    return hits;
}

size_t CountTouched(const std::vector<Hit>& hits) {
    std::set<size_t> touched;
    for (const Hit& hit : hits) {
        touched.insert(hit.object);
    }
    return touched.size();
}

}  // namespace kvprobe
