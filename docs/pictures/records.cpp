// SPDX-License-Identifier: MIT
#include "docs/pictures/pictures.h"

#include <kvgeom/kvgeom.h>

#include <algorithm>
#include <tuple>

namespace kvpictures {
namespace {

constexpr double kWidth = 620;
constexpr double kHeight = 400;
constexpr GBox2d kFrame = {{70, 50}, {550, 350}};

// Two panels side by side, with room for titles.
constexpr double kPanelsHeight = 320;
constexpr GBox2d kLeft = {{30, 75}, {295, 280}};
constexpr GBox2d kRight = {{325, 75}, {590, 280}};

constexpr GVector kUp = {0, 0, 1};

// The normal of a side, from its middle.
void DrawNormal(Picture& picture, const GPosition& from, const GVector& direction, double length) {
    picture.Arrow(from, from + length * direction, Role::kPlain);
}

// The box around a record, and its name above the corner that is highest on the page.
void DrawRange(Picture& picture, const GBox& range, const char* name) {
    picture.Draw(FromBox(range), Role::kResult, Manner::kDashed);
    picture.Code({range.m_low.m_x, range.m_high.m_y, range.m_high.m_z}, {0, -14}, name,
                 Role::kResult);
}

// Where the rays from an eye through a ring's points meet the plane through a point.
Ring Projected(const Ring& ring, const GPosition& eye, const GPosition& on_plane,
               const GUnitVector& normal) {
    Ring result;
    for (const GPosition& p : ring) {
        result.push_back(Interpolate((on_plane - eye) % normal / ((p - eye) % normal), eye, p));
    }
    return result;
}

Ring Closed(Ring ring) {
    ring.push_back(ring.front());
    return ring;
}

Ring Rectangle(const GBox2d& box) {
    GPosition2d corners[4];
    box.GiveCorners(corners);
    Ring ring(4);
    for (size_t i = 0; i < 4; ++i) {
        ring[i].Convert3d(corners[i]);
    }
    return ring;
}

std::string Answer(const std::string& question, int answer) {
    return question + " is " + std::to_string(answer);
}

// A ring of five corners, not regular, in a plane of constant z.
Ring Pentagon() {
    return {{0, 0, 0}, {3.2, -0.4, 0}, {4, 1.6, 0}, {2, 3, 0}, {-0.4, 2, 0}};
}

}  // namespace

Picture DrawBox() {
    Picture picture(kWidth, kHeight);
    const GBox box = BuildBox(0, 0, 0, 4, 3, 2);
    const Solid solid = FromBox(box);
    picture.LookAt({solid}, {{110, 60}, {540, 330}});
    picture.Draw(solid, Role::kRecord);
    GPosition corners[8];
    box.GiveCorners(corners);
    const GVector2d places[8] = {{-12, 4},  {2, 18},   {14, 6},  {2, 18},
                                 {-14, -4}, {-12, 13}, {14, -4}, {0, -16}};
    for (int i = 0; i < 8; ++i) {
        picture.Dot(corners[i], Role::kRecord);
        const char* const name = i == 0 ? " m_low" : i == 6 ? " m_high" : "";
        picture.Code(corners[i], places[i],
                     i == 0 ? name + std::string(" 0") : std::to_string(i) + name, Role::kRecord);
    }
    picture.Axes({-1.5, -0.6, 2.1}, 0.8);
    return picture;
}

Picture DrawBoxUnion() {
    Picture picture(kWidth, kPanelsHeight);
    const GBox a = BuildBox(0, 0, 0, 3, 2, 1.6);
    const GBox b = BuildBox(1.8, 0.8, 0.7, 5, 3.4, 2.6);
    const Solid solids[] = {FromBox(a), FromBox(b)};
    const Solid all = FromBox(a | b);
    for (const bool is_union : {true, false}) {
        const GBox2d& frame = is_union ? kLeft : kRight;
        picture.LookAt({all}, frame);
        picture.Title(frame, is_union ? "a | b" : "a & b");
        for (const Solid& solid : solids) {
            picture.Draw(solid, Role::kRecord);
        }
        if (is_union) {
            picture.Draw(all, Role::kResult, Manner::kDashed);
        } else {
            picture.Draw(FromBox(a & b), Role::kResult);
        }
        picture.Code({1.2, 0, 0.5}, {0, 0}, "a", Role::kRecord);
        picture.Code({4.2, 0.8, 1.3}, {0, 0}, "b", Role::kRecord);
    }
    return picture;
}

Picture DrawBoxMapping() {
    Picture picture(kWidth, kHeight);
    const GBox box = BuildBox(0, 0, 0, 4, 1.4, 2);
    const GTransf t =
        RotateTransf(1.05, GUnitVector{0, 0, 1}, {2, 0.7, 0}) * TranslateTransf({5.2, 1.5, 0});
    Solid turned = FromBox(box);
    for (Ring& side : turned) {
        MapPositions(t, side.data(), side.size(), side.data());
    }
    const Solid image = FromBox(box * t);
    picture.LookAt({FromBox(box), image}, kFrame);
    picture.Draw(FromBox(box), Role::kRecord);
    picture.Draw(turned, Role::kFaint);
    picture.Draw(image, Role::kResult, Manner::kDashed);
    picture.Arrow({4.2, 0.7, 1}, {5.2, 0.9, 1}, Role::kPlain);
    picture.Code({4.7, 0.8, 1}, {0, -14}, "t", Role::kPlain);
    picture.Code({2, 0, 0}, {-10, 34}, "box", Role::kRecord);
    picture.Code((box * t).m_low, {-2, 26}, "box * t", Role::kResult);
    return picture;
}

Picture DrawBoxClipping() {
    Picture picture(kWidth, kHeight);
    const GBox box = BuildBox(0, 0, 0, 4, 3, 2.4);
    const GUnitVector normal = BuildUnitVector(-1, -0.2, -0.35);
    const GPosition on_plane = {2, 1.5, 1.2};
    const double d = -((on_plane - GPosition{0, 0, 0}) % normal);
    GBox rest = box;
    rest.ClipWPlane(normal.m_x, normal.m_y, normal.m_z, d);

    GBox box_copy = box;
    GClipVolume inside;
    ConvertGBoxToGClipVolume(&box_copy, &inside);
    // Nothing of the box lies above this one: the plane that cuts it takes the place of its top.
    const GPosition points[] = {on_plane};
    const GUnitVector normals[] = {normal};
    GClipVolume cut = BuildClipVolume(1, points, normals);
    std::copy_n(cut.m_planes[0], 4, inside.m_planes[3]);

    const GTransf in_plane = CoordinateTransf(on_plane, normal);
    Ring sheet;
    for (const auto& [x, y] : {std::pair{-2.1, -2.4}, {2.1, -2.4}, {2.1, 2.4}, {-2.1, 2.4}}) {
        sheet.push_back(GPosition{x, y, 0} * in_plane);
    }
    picture.LookAt({FromBox(box), {sheet}}, kFrame);
    picture.Draw(FromBox(box), Role::kFaint, Manner::kDashed);
    picture.Draw(FromClipVolume(inside), Role::kRecord);
    picture.Polygon(sheet, Role::kProbe);
    picture.Draw(FromBox(rest), Role::kResult, Manner::kDashed);
    DrawNormal(picture, sheet[1], normal, 0.9);
    picture.Code(sheet[1] + 0.9 * GVector(normal), {-8, -4}, "(a, b, c)", Role::kPlain);
    picture.Label({0, 0, 0}, {0, 50}, "the box around the rest", Role::kResult);
    picture.Label({4, 0, 0}, {10, 20}, "the box before", Role::kFaint);
    return picture;
}

Picture DrawClipVolume() {
    Picture picture(kWidth, kHeight);
    const GPosition points[] = {{0, 0, 0},   {0, 0, 2.4}, {-2, 0, 0},
                                {2.2, 0, 0}, {0, -2, 0},  {0, 2, 0}};
    const GUnitVector normals[] = {
        {0, 0, 1},
        BuildUnitVector(0.1, 0.15, -1),
        BuildUnitVector(1, 0, -0.35),
        BuildUnitVector(-1, 0.1, -0.15),
        BuildUnitVector(0.1, 1, -0.3),
        BuildUnitVector(-0.1, -1, -0.25),
    };
    const GClipVolume volume = BuildClipVolume(6, points, normals);
    const Solid solid = FromClipVolume(volume);
    const GBox range = ClipVolumeRange(volume);
    picture.LookAt({FromBox(range)}, kFrame);
    DrawRange(picture, range, "ClipVolumeRange");
    picture.Draw(solid, Role::kRecord);
    // The sides come in the order of the planes. Of those that are seen, the normals.
    for (const size_t k : {1U, 3U, 4U}) {
        const GPosition middle = Mean(solid[k]);
        picture.Dot(middle, Role::kPlain);
        DrawNormal(picture, middle, normals[k], 0.8);
    }
    picture.Label(range.m_low, {0, 46}, "the normals point inwards", Role::kPlain);
    return picture;
}

Picture DrawClipVolumeTest() {
    Picture picture(kWidth, 340);
    const GPosition points[] = {{0, 0, 0}, {0, 0, 0}, {7, 0, 0}};
    const GUnitVector normals[] = {BuildUnitVector(1, 2.2, 0), BuildUnitVector(1, -2.2, 0),
                                   BuildUnitVector(-1, 0, 0)};
    const GClipVolume volume = BuildClipVolume(3, points, normals);
    picture.LookFromAbove({{-3.2, -3.6}, {8.6, 3.6}}, {{30, 30}, {590, 310}});
    const double reach = 7 / 2.2;
    picture.Polygon({{0, 0, 0}, {7, reach, 0}, {7, -reach, 0}}, Role::kRecord);
    // Both planes behind the tip.
    picture.Line({0, 0, 0}, {-2.8, 2.8 / 2.2, 0}, Role::kFaint, Stroke::kDashed);
    picture.Line({0, 0, 0}, {-2.8, -2.8 / 2.2, 0}, Role::kFaint, Stroke::kDashed);
    const std::pair<GBox2d, Role> boxes[] = {
        {{{3.6, -0.8}, {5.2, 0.6}}, Role::kResult},
        {{{-1.7, -1.5}, {-0.5, 1.5}}, Role::kProbe},
        {{{1.4, 2.1}, {3, 3.2}}, Role::kPlain},
    };
    for (const auto& [plan, role] : boxes) {
        GBox box;
        box.Convert3d(plan);
        picture.Polygon(Rectangle(plan), role);
        const GPosition above = {(plan.m_low.m_x + plan.m_high.m_x) / 2, plan.m_high.m_y, 0};
        picture.Code(above, {0, -12}, Answer("volume && box", volume && box), role);
    }
    picture.Label({-1.1, -1.5, 0}, {0, 18}, "a miss that no plane shows", Role::kProbe);
    picture.Code({7, -reach, 0}, {0, 16}, "volume", Role::kRecord);
    return picture;
}

Picture DrawBoreLine() {
    Picture picture(kWidth, kHeight);
    const GUnitVector direction = BuildUnitVector(1, 0.25, 0.3);
    const GBoreLine line = BuildBoreLine({0, 0, 0}, direction, 4.6, -1.6, 0.7);
    const Solid solid = FromBoreLine(line);
    const GBox range = BoreLineRange(line);
    picture.LookAt({FromBox(range)}, kFrame);
    DrawRange(picture, range, "BoreLineRange");
    picture.Line(line.Evaluate(line.m_back - 0.7), line.Evaluate(line.m_front + 1), Role::kFaint,
                 Stroke::kHidden);
    picture.Draw(solid, Role::kRecord);
    picture.Arrow(line.m_point, line.Evaluate(1.5), Role::kPlain, Stroke::kThick);
    const GPosition front = line.Evaluate(line.m_front);
    const GPosition rim = front + line.m_radius * GetPerpVector(direction);
    picture.Line(front, rim, Role::kPlain);
    for (const double t : {line.m_back, 0.0, line.m_front}) {
        picture.Dot(line.Evaluate(t), Role::kPlain);
    }
    picture.Code(line.Evaluate(line.m_back), {0, 52}, "m_back", Role::kPlain);
    picture.Code(line.m_point, {0, 52}, "m_point", Role::kPlain);
    picture.Code(line.Evaluate(1.5), {4, -24}, "m_direction", Role::kPlain);
    picture.Code(front, {24, 10}, "m_front", Role::kPlain);
    picture.Code(rim, {14, -14}, "m_radius", Role::kPlain);
    return picture;
}

Picture DrawBoreLineTest() {
    Picture picture(kWidth, 340);
    const GBox2d plan = {{0, 0}, {4.4, 2.4}};
    GBox box;
    box.Convert3d(plan);
    box.m_low.m_z = -1;
    box.m_high.m_z = 1;
    constexpr double kRadius = 0.8;
    const GUnitVector direction = BuildUnitVector(1, -0.72, 0);
    const GPosition past_corner = {plan.m_high.m_x + 0.78 * kRadius,
                                   plan.m_high.m_y + 0.78 * kRadius, 0};
    const GBoreLine miss =
        BuildBoreLine(past_corner - 2.4 * direction, direction, 5.2, 0.0, kRadius);
    const GBoreLine hit =
        BuildBoreLine({-2.4, 2.3, 0}, BuildUnitVector(1, -0.42, 0), 4, 0, kRadius);
    picture.LookFromAbove({{-3.4, -1.2}, {8.4, 5}}, {{30, 40}, {590, 310}});
    const GVector2d enlargement = {kRadius, kRadius};
    picture.Outline(Rectangle({plan.m_low - enlargement, plan.m_high + enlargement}), Role::kFaint,
                    Stroke::kDashed);
    picture.Polygon(Rectangle(plan), Role::kRecord);
    for (const GBoreLine* const line : {&miss, &hit}) {
        const Role role = line == &miss ? Role::kProbe : Role::kResult;
        const GPosition back = line->Evaluate(line->m_back);
        const GPosition front = line->Evaluate(line->m_front);
        const GVector aside = line->m_radius * (kUp * GVector(line->m_direction));
        picture.Polygon({back - aside, front - aside, front + aside, back + aside}, role);
        picture.Line(back, front, role, Stroke::kDashed);
    }
    picture.Code(miss.Evaluate(0.0), {-36, -34}, Answer("line && box", miss && box), Role::kProbe);
    picture.Label(miss.Evaluate(0.0), {-36, -14}, "though it misses the corner", Role::kProbe);
    picture.Code(hit.Evaluate(0.0), {8, -60}, Answer("line && box", hit && box), Role::kResult);
    picture.Code({2.6, 0.5, 0}, {0, 0}, "box", Role::kRecord);
    picture.Label({2.2, -kRadius, 0}, {0, 16}, "the box enlarged by the radius", Role::kFaint);
    return picture;
}

Picture DrawBoreLineClipping() {
    Picture picture(kWidth, kPanelsHeight);
    const GBoreLine line = BuildBoreLine({-3, -0.4, 0}, BuildUnitVector(1, 0.28, 0), 7.4, 0, 0.3);
    const GBox2d bounds = {{-3.4, -2}, {4.4, 3}};

    picture.LookFromAbove(bounds, kLeft);
    picture.Title(kLeft, "line & box");
    const GBox2d plan = {{-0.6, -0.9}, {2, 1.2}};
    GBox box;
    box.Convert3d(plan);
    picture.Polygon(Rectangle(plan), Role::kRecord);
    const GVector2d enlargement = {line.m_radius, line.m_radius};
    picture.Outline(Rectangle({plan.m_low - enlargement, plan.m_high + enlargement}), Role::kFaint,
                    Stroke::kDashed);
    const GBoreLine span = line & box;
    picture.Line(line.Evaluate(0.0), line.Evaluate(line.m_front), Role::kFaint);
    picture.Line(span.m_point, span.Evaluate(span.m_front), Role::kResult, Stroke::kThick);
    // The span reaches from the enlarged box's first corner along the direction to its last.
    const GPosition first = {plan.m_low.m_x - line.m_radius, plan.m_low.m_y - line.m_radius, 0};
    const GPosition last = {plan.m_high.m_x + line.m_radius, plan.m_high.m_y + line.m_radius, 0};
    picture.Line(first, span.m_point, Role::kResult, Stroke::kHidden);
    picture.Line(last, span.Evaluate(span.m_front), Role::kResult, Stroke::kHidden);
    picture.Dot(span.m_point, Role::kResult);
    picture.Dot(span.Evaluate(span.m_front), Role::kResult);
    picture.Code(span.m_point, {-6, -16}, "m_point", Role::kResult);
    picture.Code({0.7, -0.5, 0}, {0, 0}, "box", Role::kRecord);

    picture.LookFromAbove(bounds, kRight);
    picture.Title(kRight, "line.ClipWPlane(a, b, c, d)");
    GBoreLine cut = line;
    const GUnitVector normal = BuildUnitVector(-1, -0.5, 0);
    const GPosition on_plane = {1, 0.6, 0};
    cut.ClipWPlane(normal.m_x, normal.m_y, normal.m_z, -((on_plane - GPosition{0, 0, 0}) % normal));
    const GVector along_plane = kUp * GVector(normal);
    picture.Line(on_plane + 2.6 * along_plane, on_plane - 2.4 * along_plane, Role::kProbe);
    DrawNormal(picture, on_plane + 2 * along_plane, normal, 1.1);
    picture.Line(line.Evaluate(0.0), line.Evaluate(line.m_front), Role::kFaint);
    picture.Line(cut.Evaluate(cut.m_back), cut.Evaluate(cut.m_front), Role::kResult,
                 Stroke::kThick);
    picture.Dot(cut.Evaluate(cut.m_back), Role::kResult);
    picture.Dot(cut.Evaluate(cut.m_front), Role::kResult);
    picture.Code(cut.Evaluate(cut.m_front), {8, 18}, "m_front", Role::kResult);
    picture.Code(cut.Evaluate(cut.m_back), {2, -24}, "m_back", Role::kResult);
    return picture;
}

Picture DrawBoreCone() {
    Picture picture(kWidth, kHeight);
    const GUnitVector direction = BuildUnitVector(1, 0.1, 0.12);
    const GBoreLine line = BuildBoreLine({0, 0, 0}, direction, 2.2, -1.2, 0.8);
    const GPosition eye = line.Evaluate(-3.4);
    GBoreCone cone;
    long err = 0;
    BuildBoreCone(line, eye, cone, &err);
    const Ring circle = Circle(line.m_point, direction, line.m_radius);
    const Ring back = Projected(circle, eye, line.Evaluate(line.m_back), direction);
    const Ring front = Projected(circle, eye, line.Evaluate(line.m_front), direction);
    const GBox range = BoreConeRange(cone);
    picture.LookAt({FromBox(range), {{eye}}}, kFrame);
    DrawRange(picture, range, "BoreConeRange");
    for (size_t i = 0; i < circle.size(); i += circle.size() / 6) {
        picture.Line(eye, back[i], Role::kFaint, Stroke::kHidden);
    }
    picture.Draw(Between(back, front), Role::kRecord);
    picture.Outline(circle, Role::kPlain);
    picture.Arrow(line.m_point, line.Evaluate(1.3), Role::kPlain);
    picture.Dot(line.m_point, Role::kPlain);
    picture.Dot(eye, Role::kProbe);
    picture.Code(eye, {0, -18}, "m_eye", Role::kProbe);
    picture.Code(Mean(back), {0, 46}, "m_back", Role::kRecord);
    picture.Code(Mean(front), {36, 112}, "m_front", Role::kRecord);
    picture.Label(line.m_point, {0, -68}, "the circle", Role::kPlain);
    return picture;
}

Picture DrawFence() {
    Picture picture(kWidth, kHeight);
    const Ring ring = Pentagon();
    Ring points = Closed(ring);
    const GUnitVector direction = {0, 0, 1};
    GPtFence fence = {};
    Ring room(points.size());
    fence.m_points = room.data();
    long err = 0;
    BuildPtFence(points.size(), points.data(), direction, 1.9, -0.7, fence, &err);
    const Ring back = Moved(ring, fence.m_back * direction);
    const Ring front = Moved(ring, fence.m_front * direction);
    const GBox range = PtFenceRange(fence);
    picture.LookAt({FromBox(range)}, {{70, 50}, {520, 350}});
    DrawRange(picture, range, "PtFenceRange");
    picture.Draw(Between(back, front), Role::kRecord);
    picture.Outline(ring, Role::kPlain, Stroke::kThick);

    // The planes that bound it, a point and an inward normal each.
    Ring plane_points(points.size() + 1);
    std::vector<GUnitVector> plane_normals(points.size() + 1);
    fence.FindPlanes(plane_points.data(), plane_normals.data());
    const GVector halfway = 0.54 * fence.m_front * direction;
    for (const size_t i : {0U, 1U, 2U}) {
        const GPosition middle =
            i == 0 ? Mean(front) : Interpolate(0.5, ring[i - 1], ring[i]) + halfway;
        picture.Dot(middle, Role::kProbe);
        picture.Arrow(middle, middle + 0.7 * plane_normals[i], Role::kProbe);
    }
    picture.Code(front[2], {16, -2}, "m_front", Role::kRecord);
    picture.Code(back[2], {16, 2}, "m_back", Role::kRecord);
    picture.Code(ring[2], {16, 0}, "m_points", Role::kPlain);
    return picture;
}

Picture DrawFrustum() {
    Picture picture(kWidth, kHeight);
    const Ring ring = {{0, -1, -0.7}, {0, 1, -0.7}, {0, 1.1, 0.5}, {0, 0, 1}, {0, -1.1, 0.5}};
    Ring points = Closed(ring);
    const GUnitVector direction = {1, 0, 0};
    GPtFence fence = {points.size(), points.data(), direction, 2.4, -1};
    const GPosition eye = {-2.8, 0.1, 0};
    GPtFrustum frustum = {};
    Ring room(points.size());
    frustum.m_fence.m_points = room.data();
    long err = 0;
    BuildPtFrustum(fence, eye, frustum, &err);
    const Ring back = Projected(ring, eye, ring[0] + fence.m_back * direction, direction);
    const Ring front = Projected(ring, eye, ring[0] + fence.m_front * direction, direction);
    const GBox range = PtFrustumRange(frustum);
    picture.LookAt({FromBox(range), {{eye}}}, kFrame);
    DrawRange(picture, range, "PtFrustumRange");
    for (const GPosition& p : back) {
        picture.Line(eye, p, Role::kFaint, Stroke::kHidden);
    }
    picture.Draw(Between(back, front), Role::kRecord);
    picture.Outline(ring, Role::kPlain, Stroke::kThick);
    picture.Dot(eye, Role::kProbe);
    picture.Code(eye, {0, 20}, "m_eye", Role::kProbe);
    picture.Code(back[0], {0, 24}, "m_back", Role::kRecord);
    picture.Code(ring[0], {0, 26}, "m_points", Role::kPlain);
    picture.Code(front[0], {4, 24}, "m_front", Role::kRecord);
    return picture;
}

Picture DrawPrism() {
    Picture picture(kWidth, kHeight);
    const Ring ring = Pentagon();
    Ring points = Closed(ring);
    const GTransf place =
        CoordinateTransf({1, 0, 0.5}, BuildUnitVector(1, 0.3, 0.25), BuildUnitVector(-0.3, 1, 0.1));
    GRtPrism prism = {};
    Ring room(points.size());
    prism.m_points = room.data();
    long err = 0;
    BuildRtPrism(place, points.data(), points.size(), 1.8, prism, &err);
    Ring bottom(ring.size());
    MapPositions(prism.m_transf, ring.data(), ring.size(), bottom.data());
    const Ring top = Moved(bottom, GVector{0, 0, prism.m_height} * prism.m_transf);
    const GBox range = RtPrismRange(prism);
    picture.LookAt({FromBox(range)}, {{80, 50}, {520, 350}});
    DrawRange(picture, range, "RtPrismRange");
    picture.Draw(Between(bottom, top), Role::kRecord);
    const GPosition origin = GPosition{0, 0, 0} * prism.m_transf;
    const std::pair<const char*, GVector> axes[] = {
        {"x", {1.3, 0, 0}}, {"y", {0, 1.3, 0}}, {"z", {0, 0, 1.1}}};
    for (const auto& [name, axis] : axes) {
        const GVector arm = axis * prism.m_transf;
        picture.Arrow(origin, origin + arm, Role::kPlain);
        picture.Label(origin + 1.22 * arm, {0, 0}, name, Role::kPlain);
    }
    picture.Dot(origin, Role::kPlain);
    picture.Code(origin, {-10, 6}, "m_transf", Role::kPlain);
    picture.Code(Interpolate(0.5, bottom[2], top[2]), {10, 0}, "m_height", Role::kRecord);
    picture.Code(Interpolate(0.5, bottom[1], bottom[0]), {0, 15}, "m_points", Role::kRecord);
    return picture;
}

}  // namespace kvpictures
