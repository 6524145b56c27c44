// SPDX-License-Identifier: MIT
#include "probe/page.h"

#include "probe/text.h"

#include <kvgeom/kvgeom.h>

#include <algorithm>

namespace kvprobe {
namespace {

// The eye stands to the right of the front and above: both are seen, and no axis is foreshortened
// to nothing.
constexpr double kAzimuth = -0.62;
constexpr double kElevation = 0.46;

constexpr double kSmallestExtent = 1e-6;

}  // namespace

GTransf View(UpAxis up) {
    const GUnitVector x = {1, 0, 0};
    const GUnitVector y = {0, 1, 0};
    // A z that points up becomes y.
    const GTransf upright =
        up == UpAxis::kY ? TranslateTransf({0, 0, 0}) : RotateTransf(0.0, -1.0, x);
    return upright * RotateTransf(kAzimuth, y) * RotateTransf(kElevation, x);
}

GTransf FitToPage(const GTransf& view, const GBox& bounds, const GBox2d& frame) {
    const GVector extent = bounds.m_high - bounds.m_low;
    const GVector2d room = frame.m_high - frame.m_low;
    const double fit = std::min(room.m_x / std::max(extent.m_x, kSmallestExtent),
                                room.m_y / std::max(extent.m_y, kSmallestExtent));
    const GVector to_origin = GPosition{0, 0, 0} - Interpolate(0.5, bounds.m_low, bounds.m_high);
    const GPosition2d centre = Interpolate(0.5, frame.m_low, frame.m_high);
    const GVector to_page = {centre.m_x, centre.m_y, 0};
    // The y axis of a page points down.
    return view * TranslateTransf(to_origin) * ScaleTransf(fit) *
           ReflectTransf(GUnitVector{0, 1, 0}) * TranslateTransf(to_page);
}

std::string Pixels(double value) {
    return Decimal(value, 2);
}

GPosition2d OnPage(const GPosition& p) {
    return {p.m_x, p.m_y};
}

std::string PathPoint(const GPosition2d& p) {
    return Pixels(p.m_x) + "," + Pixels(p.m_y);
}

std::string PathPoint(const GPosition& p) {
    return PathPoint(OnPage(p));
}

}  // namespace kvprobe
