// SPDX-License-Identifier: MIT
#include "docs/pictures/pictures.h"

#include <kvgeom/kvgeom.h>

#include <tuple>

namespace kvpictures {
namespace {

constexpr double kWidth = 620;
constexpr double kHeight = 320;
constexpr GBox2d kLeft = {{45, 75}, {285, 285}};
constexpr GBox2d kRight = {{335, 75}, {575, 285}};

constexpr GUnitVector kZ = {0, 0, 1};
constexpr GPosition kOrigin = {0, 0, 0};
constexpr double kThirtyDegrees = 0.5235987755982988;
constexpr double kQuarterTurn = 1.5707963267948966;

void DrawPlanAxes(Picture& picture, double length) {
    const std::pair<const char*, GVector> axes[] = {{"x", {1, 0, 0}}, {"y", {0, 1, 0}}};
    for (const auto& [name, axis] : axes) {
        picture.Arrow(kOrigin, kOrigin + length * axis, Role::kFaint);
        picture.Label(kOrigin + 1.08 * length * axis, {0, 0}, name, Role::kFaint);
    }
}

// A flag: no turn and no mirror image of it looks like itself.
Ring Flag() {
    return {{0.25, 0.2, 0}, {0.25, 1.6, 0}, {1.15, 1.3, 0}, {0.45, 0.98, 0}, {0.45, 0.2, 0}};
}

template <class Map>
Ring Mapped(const Ring& ring, Map map) {
    Ring result;
    for (const GPosition& p : ring) {
        result.push_back(map(p));
    }
    return result;
}

}  // namespace

Picture DrawHandedness() {
    Picture picture(kWidth, kHeight);
    const GUnitVector x = {1, 0, 0};
    const GUnitVector y = {0, 1, 0};
    const GVector z = x * y;
    const GBox2d frames[] = {kLeft, kRight};
    const Solid bounds = FromBox(BuildBox(-0.2, -0.2, 0, 1.15, 1.15, 1.1));
    picture.LookAt({bounds}, frames[0]);
    picture.Title(frames[0], "x * y is z");
    const std::pair<const char*, GVector> axes[] = {{"x", x}, {"y", y}, {"z", z}};
    for (const auto& [name, axis] : axes) {
        picture.Arrow(kOrigin, kOrigin + axis, axis.m_z > 0 ? Role::kResult : Role::kRecord);
        picture.Label(kOrigin + 1.12 * axis, {0, 0}, name,
                      axis.m_z > 0 ? Role::kResult : Role::kRecord);
    }
    picture.Arc(kOrigin + 0.45 * x, kOrigin, kZ, kQuarterTurn, Role::kPlain);

    picture.LookAt({bounds}, frames[1]);
    picture.Title(frames[1], "Rotation(angle, axis)");
    const GUnitVector axis = BuildUnitVector(0.45, 0.4, 1);
    const GPosition tip = kOrigin + 1.25 * axis;
    const GPosition p = {0.95, 0.1, 0.25};
    const GPosition centre = kOrigin + ((p - kOrigin) % axis) * axis;
    constexpr double kAngle = 1.9;
    const GPosition image = p * RotateTransf(kAngle, axis);
    picture.Outline(Circle(centre, axis, GDistance(p, centre)), Role::kFaint, Stroke::kHidden);
    picture.Arrow(kOrigin, tip, Role::kPlain);
    picture.Code(tip, {0, -14}, "axis", Role::kPlain);
    picture.Line(centre, p, Role::kFaint, Stroke::kHidden);
    picture.Line(centre, image, Role::kFaint, Stroke::kHidden);
    picture.Arc(p, centre, axis, kAngle, Role::kResult);
    picture.Dot(p, Role::kRecord);
    picture.Code(p, {6, 18}, "p", Role::kRecord);
    picture.Code(image, {12, -10}, "p * m", Role::kResult);
    return picture;
}

Picture DrawRows() {
    Picture picture(kWidth, kHeight);
    const GMatrix m = Rotation(kThirtyDegrees, kZ);
    const GBox2d frame = {{60, 40}, {560, 280}};
    picture.LookFromAbove({{-1.4, -0.15}, {1.9, 1.15}}, frame);
    DrawPlanAxes(picture, 1.05);
    const std::tuple<unsigned int, const char*, GVector2d> rows[] = {
        {0, "row 0: (0.87, 0.50, 0)", {12, -8}}, {1, "row 1: (-0.50, 0.87, 0)", {-6, -14}}};
    for (const auto& [row, text, by] : rows) {
        const GPosition tip = kOrigin + m[row];
        picture.Arrow(kOrigin, tip, Role::kRecord, Stroke::kThick);
        picture.Label(tip, by, text, Role::kRecord);
        GVector axis = {0, 0, 0};
        axis[row] = 1;
        picture.Arc(kOrigin + 0.55 * axis, kOrigin, kZ, kThirtyDegrees * 0.92, Role::kPlain);
    }
    return picture;
}

Picture DrawForms() {
    Picture picture(kWidth, kHeight);
    const GMatrix m = Rotation(kThirtyDegrees, kZ);
    const GUnitVector u = BuildUnitVector(1, 0.35, 0);
    const std::tuple<GBox2d, const char*, GUnitVector> panels[] = {{kLeft, "u * m", u * m},
                                                                   {kRight, "m * u", m * u}};
    for (const auto& [frame, title, image] : panels) {
        picture.LookFromAbove({{-0.2, -0.4}, {1.2, 1.25}}, frame);
        picture.Title(frame, title);
        DrawPlanAxes(picture, 1.05);
        picture.Arrow(kOrigin, kOrigin + u, Role::kRecord, Stroke::kThick);
        picture.Code(kOrigin + u, {10, 0}, "u", Role::kRecord);
        picture.Arrow(kOrigin, kOrigin + image, Role::kResult, Stroke::kThick);
        picture.Code(kOrigin + image, {10, 0}, title, Role::kResult);
        const double angle = image.m_y > u.m_y ? kThirtyDegrees : -kThirtyDegrees;
        picture.Arc(kOrigin + 0.6 * u, kOrigin, kZ, angle * 0.92, Role::kPlain);
    }
    return picture;
}

Picture DrawProducts() {
    Picture picture(kWidth, kHeight);
    const GTransf move = TranslateTransf({2.8, 0, 0});
    const GTransf turn = RotateTransf(kQuarterTurn, kZ);
    G4x4 move_matrix;
    move_matrix = move;
    G4x4 turn_matrix;
    turn_matrix = turn;
    const Ring flag = Flag();

    const Ring moved = Mapped(flag, [&](const GPosition& p) { return p * move; });
    const Ring moved_and_turned =
        Mapped(flag, [&](const GPosition& p) { return p * (move * turn); });
    const Ring turned = Mapped(flag, [&](const GPosition& p) { return turn_matrix * p; });
    const Ring turned_and_moved =
        Mapped(flag, [&](const GPosition& p) { return (move_matrix * turn_matrix) * p; });

    const std::tuple<GBox2d, const char*, const Ring*, const Ring*> panels[] = {
        {kLeft, "GTransf: p * (move * turn)", &moved, &moved_and_turned},
        {kRight, "G4x4: (move * turn) * p", &turned, &turned_and_moved}};
    for (const auto& [frame, title, between, image] : panels) {
        picture.LookFromAbove({{-1.8, -0.3}, {4.1, 4.3}}, frame);
        picture.Title(frame, title);
        DrawPlanAxes(picture, 3.6);
        picture.Polygon(flag, Role::kRecord);
        picture.Outline(*between, Role::kFaint, Stroke::kDashed);
        picture.Polygon(*image, Role::kResult);
        picture.Label(Mean(flag), {-4, 44}, "p", Role::kRecord);
    }
    return picture;
}

Picture DrawAngles() {
    Picture picture(kWidth, kHeight);
    const GVector2d a = {1, 0.15};
    const GVector2d b = {0.35, 0.95};
    const std::tuple<GBox2d, const char*, bool> panels[] = {{kLeft, "GiveAngle(a, b)", true},
                                                            {kRight, "GiveAngle(b, a)", false}};
    for (const auto& [frame, title, from_a] : panels) {
        picture.LookFromAbove({{-0.2, -0.15}, {1.2, 1.1}}, frame);
        picture.Title(frame, title);
        GVector tips[2];
        tips[0].Convert3d(a);
        tips[1].Convert3d(b);
        picture.Arrow(kOrigin, kOrigin + tips[0], Role::kRecord, Stroke::kThick);
        picture.Arrow(kOrigin, kOrigin + tips[1], Role::kRecord, Stroke::kThick);
        picture.Code(kOrigin + tips[0], {10, 0}, "a", Role::kRecord);
        picture.Code(kOrigin + tips[1], {0, -14}, "b", Role::kRecord);
        const GVector& first = from_a ? tips[0] : tips[1];
        const double angle = from_a ? GiveAngle(a, b) : GiveAngle(b, a);
        picture.Arc(kOrigin + 0.5 / first.GetLength() * first, kOrigin, kZ, angle * 0.95,
                    Role::kResult);
        double rounded = 0;
        char text[16];
        KVRoundValue(angle, 2, &rounded, sizeof text, text);
        picture.Label({0.46, 0.42, 0}, {8, -4}, text, Role::kResult);
    }
    return picture;
}

}  // namespace kvpictures
