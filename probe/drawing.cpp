// SPDX-License-Identifier: MIT
#include "probe/drawing.h"

#include "probe/text.h"

#include <kvgeom/kvgeom.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <map>
#include <ostream>

namespace kvprobe {
namespace {

// Pixels.
constexpr double kSceneWidth = 1120;
constexpr double kSceneHeight = 820;
constexpr double kMargin = 40;
constexpr double kTitleHeight = 70;
constexpr double kLegendWidth = 480;
constexpr double kLegendRow = 44;
constexpr double kThinnestTube = 3;
constexpr double kBadgeRadius = 12;
constexpr double kBadgeDistance = 62;
constexpr double kBadgeSpacing = 27;

// The eye stands to the right of the front and above: both are seen, and no axis is foreshortened
// to nothing.
constexpr double kAzimuth = -0.62;
constexpr double kElevation = 0.46;

// How far a leg is drawn on either side of the model's middle, in diagonals of the model.
constexpr double kLegReach = 0.62;

constexpr size_t kLegendCharacters = 50;

// A qualitative palette (Tableau's ten, less the grey and the reds, which the probe has).
constexpr std::array<const char*, 8> kPalette = {"#4e79a7", "#f28e2b", "#59a14f", "#b07aa1",
                                                 "#edc948", "#76b7b2", "#9c755f", "#ff9da7"};

// The corners of the six sides of a box, by index as in GBox::GiveCorners.
constexpr int kSides[6][4] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4},
                              {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}};
constexpr int kEdges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                               {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};

std::string Pixels(double value) {
    return Decimal(value, 2);
}

std::string Point(const GPosition& p) {
    return Pixels(p.m_x) + "," + Pixels(p.m_y);
}

// The corners of an object's box on the page.
struct Cuboid {
    std::array<GPosition, 8> corners;

    Cuboid(const Object& object, const GTransf& page) {
        object.box.GiveCorners(corners.data());
        for (GPosition& corner : corners) {
            corner = object.placement * corner * page;
        }
    }

    GPosition Centre() const { return Interpolate(0.5, corners[0], corners[6]); }
};

// Turns the model to the eye: x to the right, y upwards, z towards it.
GTransf View(UpAxis up) {
    const GUnitVector x = {1, 0, 0};
    const GUnitVector y = {0, 1, 0};
    const GTransf upright = up == UpAxis::kY
                                ? TranslateTransf({0, 0, 0})
                                : RotateTransf(0.0, -1.0, x);  // z, which points up, becomes y
    return upright * RotateTransf(kAzimuth, y) * RotateTransf(kElevation, x);
}

// The view, scaled and moved so that the given box around all that is drawn fills the page.
GTransf FitToPage(const GTransf& view, const GBox& bounds) {
    const double width = bounds.m_high.m_x - bounds.m_low.m_x;
    const double height = bounds.m_high.m_y - bounds.m_low.m_y;
    const double fit = std::min((kSceneWidth - 2 * kMargin) / std::max(width, 1e-6),
                                (kSceneHeight - 2 * kMargin) / std::max(height, 1e-6));
    const GPosition centre = Interpolate(0.5, bounds.m_low, bounds.m_high);
    const GVector to_origin = GPosition{0, 0, 0} - centre;
    const GVector to_page = {kSceneWidth / 2, kTitleHeight + kSceneHeight / 2, 0};
    // The y axis of a page points down.
    return view * TranslateTransf(to_origin) * ScaleTransf(fit) *
           ReflectTransf(GUnitVector{0, 1, 0}) * TranslateTransf(to_page);
}

struct Drawing {
    std::ostream& out;
    const std::vector<GBoreLine>& legs;
    const std::vector<Object>& objects;
    const std::vector<Hit>& hits;
    GBox model_box;                 // around all objects, in the model
    GTransf page;                   // from the model to the page
    std::map<size_t, int> numbers;  // of the objects that may be touched, in the order of the hits

    const char* ColourOf(size_t object) const {
        return kPalette[static_cast<size_t>(numbers.at(object) - 1) % kPalette.size()];
    }

    // The part of a leg that is drawn: what is near enough to the model.
    bool DrawnSpan(const GBoreLine& leg, double& begin, double& end) const {
        const double middle = leg.Evaluate(Interpolate(0.5, model_box.m_low, model_box.m_high));
        const double reach = kLegReach * GDistance(model_box.m_low, model_box.m_high);
        begin = std::max(leg.m_back, middle - reach);
        end = std::min(leg.m_front, middle + reach);
        return begin < end;
    }

    GBox BoundsIn(const GTransf& view) const {
        std::vector<GPosition> points;
        for (const Object& object : objects) {
            const Cuboid cuboid(object, view);
            points.insert(points.end(), cuboid.corners.begin(), cuboid.corners.end());
        }
        for (const GBoreLine& leg : legs) {
            double begin;
            double end;
            if (DrawnSpan(leg, begin, end)) {
                points.push_back(leg.Evaluate(begin) * view);
                points.push_back(leg.Evaluate(end) * view);
            }
        }
        return BuildBox(points.size(), points.data());
    }

    void DrawWireframes() const {
        out << "<g fill=\"none\" stroke=\"#8494a6\" stroke-width=\"0.6\" stroke-opacity=\"0.6\">\n";
        for (size_t i = 0; i < objects.size(); ++i) {
            if (numbers.count(i) != 0) {
                continue;
            }
            const Cuboid cuboid(objects[i], page);
            out << "<path d=\"";
            for (const auto& edge : kEdges) {
                out << "M" << Point(cuboid.corners[static_cast<size_t>(edge[0])]) << "L"
                    << Point(cuboid.corners[static_cast<size_t>(edge[1])]);
            }
            out << "\"><title>" << XmlEscaped(objects[i].name) << "</title></path>\n";
        }
        out << "</g>\n";
    }

    // Far objects first. Sides that face the eye are filled, the more the light falls on them the
    // lighter; the edges behind shine through.
    void DrawTouched() const {
        std::vector<std::pair<double, size_t>> by_depth;
        for (const auto& [object, number] : numbers) {
            by_depth.emplace_back(Cuboid(objects[object], page).Centre().m_z, object);
        }
        std::sort(by_depth.begin(), by_depth.end());
        for (const auto& [depth, object] : by_depth) {
            const Cuboid cuboid(objects[object], page);
            const GPosition centre = cuboid.Centre();
            const std::string colour = ColourOf(object);
            out << "<g stroke=\"" << colour << "\" stroke-linejoin=\"round\"><title>"
                << XmlEscaped(objects[object].name) << "</title>\n";
            for (const auto& side : kSides) {
                std::array<GPosition, 4> quad;
                for (size_t k = 0; k < quad.size(); ++k) {
                    quad[k] = cuboid.corners[static_cast<size_t>(side[k])];
                }
                const GVector outward = Interpolate(0.5, quad[0], quad[2]) - centre;
                const bool faces_eye = outward.m_z > 0;
                // Light from above and the left of the eye; up is -y on the page.
                const GVector light = {-0.35, -0.8, 0.5};
                const double lit =
                    std::clamp(0.5 + 0.5 * std::cos(GiveAngle(outward, light)), 0.0, 1.0);
                out << "<path d=\"M" << Point(quad[0]) << "L" << Point(quad[1]) << "L"
                    << Point(quad[2]) << "L" << Point(quad[3]) << "Z\" ";
                if (faces_eye) {
                    out << "fill=\"" << colour << "\" fill-opacity=\""
                        << Decimal(0.62 - 0.4 * lit, 2) << "\" stroke-width=\"1.1\"/>\n";
                } else {
                    out << "fill=\"none\" stroke-width=\"0.6\" stroke-opacity=\"0.5\"/>\n";
                }
            }
            out << "</g>\n";
        }
    }

    // A stroke in three shades, from the rim to the highlight.
    void DrawTube(const GPosition& from, const GPosition& to, double width,
                  const std::array<const char*, 3>& shades) const {
        constexpr std::array<double, 3> kParts = {1.0, 0.62, 0.2};
        for (size_t i = 0; i < shades.size(); ++i) {
            out << "<path d=\"M" << Point(from) << "L" << Point(to) << "\" stroke=\"" << shades[i]
                << "\" stroke-width=\"" << Pixels(width * kParts[i]) << "\"/>\n";
        }
    }

    // Blue where it runs free, red within the boxes that it may touch.
    void DrawProbe() const {
        out << "<g fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
        for (size_t i = 0; i < legs.size(); ++i) {
            const GBoreLine& leg = legs[i];
            double begin;
            double end;
            if (!DrawnSpan(leg, begin, end)) {
                continue;
            }
            const double width = std::max(2 * leg.m_radius * page.m_scaling, kThinnestTube);
            DrawTube(leg.Evaluate(begin) * page, leg.Evaluate(end) * page, width,
                     {"#17324d", "#3f74a8", "#b9d4ec"});
            for (const Hit& hit : hits) {
                const double enters = std::max(hit.enters, begin);
                const double leaves = std::min(hit.leaves, end);
                if (hit.leg == i && enters <= leaves) {
                    DrawTube(leg.Evaluate(enters) * page, leg.Evaluate(leaves) * page, width,
                             {"#7a1420", "#d8404f", "#ffd0d0"});
                }
            }
        }
        out << "</g>\n";
    }

    struct Badge {
        double along;  // pixels from the leg's begin on the page
        GPosition anchor;
        size_t object;
    };

    // Numbers beside the probe, joined to the places they mean, pushed apart where they are many.
    void DrawBadges() const {
        for (size_t i = 0; i < legs.size(); ++i) {
            double begin;
            double end;
            if (!DrawnSpan(legs[i], begin, end)) {
                continue;
            }
            const GPosition from = legs[i].Evaluate(begin) * page;
            GVector run = legs[i].Evaluate(end) * page - from;
            run.m_z = 0;
            if (run.GetLength() < 1) {
                run = {1, 0, 0};  // seen end on
            }
            run = run / run.GetLength();
            GVector aside = {run.m_y, -run.m_x, 0};
            if (aside.m_y > 0) {
                aside = -aside;
            }
            std::vector<Badge> badges;
            for (const Hit& hit : hits) {
                if (hit.leg != i) {
                    continue;
                }
                const double middle = std::clamp(
                    (std::max(hit.enters, begin) + std::min(hit.leaves, end)) / 2, begin, end);
                const GPosition anchor = legs[i].Evaluate(middle) * page;
                badges.push_back({(anchor - from) % run, anchor, hit.object});
            }
            std::stable_sort(badges.begin(), badges.end(),
                             [](const Badge& a, const Badge& b) { return a.along < b.along; });
            double last = -kBadgeSpacing;
            for (const Badge& badge : badges) {
                last = std::max(badge.along, last + kBadgeSpacing);
                DrawBadge(badge,
                          badge.anchor + (last - badge.along) * run + kBadgeDistance * aside);
            }
        }
    }

    void DrawBadge(const Badge& badge, const GPosition& centre) const {
        out << "<path d=\"M" << Point(badge.anchor) << "L" << Point(centre)
            << "\" stroke=\"#333\" stroke-width=\"0.9\"/>\n"
            << "<circle cx=\"" << Pixels(badge.anchor.m_x) << "\" cy=\"" << Pixels(badge.anchor.m_y)
            << "\" r=\"2.2\" fill=\"#333\"/>\n";
        DrawNumber(badge.object, centre);
    }

    void DrawNumber(size_t object, const GPosition& centre) const {
        out << "<circle cx=\"" << Pixels(centre.m_x) << "\" cy=\"" << Pixels(centre.m_y)
            << "\" r=\"" << Pixels(kBadgeRadius) << "\" fill=\"" << ColourOf(object)
            << "\" stroke=\"#fff\" stroke-width=\"1.5\"/>\n<text x=\"" << Pixels(centre.m_x)
            << "\" y=\"" << Pixels(centre.m_y + 4.5)
            << "\" text-anchor=\"middle\" font-size=\"12\" font-weight=\"bold\" fill=\"#fff\">"
            << numbers.at(object) << "</text>\n";
    }

    void DrawLegend() const {
        const double left = kSceneWidth;
        double y = kTitleHeight + kMargin;
        for (const auto& [object, number] : ByNumber()) {
            DrawNumber(object, {left + kBadgeRadius, y, 0});
            out << "<text x=\"" << Pixels(left + 34) << "\" y=\"" << Pixels(y - 2)
                << "\" font-size=\"13\" fill=\"#222\">"
                << XmlEscaped(Shortened(objects[object].name, kLegendCharacters)) << "</text>\n";
            out << "<text x=\"" << Pixels(left + 34) << "\" y=\"" << Pixels(y + 14)
                << "\" font-size=\"12\" fill=\"#667\">" << Spans(object) << "</text>\n";
            y += kLegendRow;
        }
    }

    // Where an object is entered and left, leg by leg.
    std::string Spans(size_t object) const {
        std::string text;
        for (const Hit& hit : hits) {
            if (hit.object == object) {
                text += text.empty() ? "" : "; ";
                text += legs.size() > 1 ? "leg " + std::to_string(hit.leg + 1) + ": " : "";
                text += Decimal(hit.enters, 2) + " to " + Decimal(hit.leaves, 2);
            }
        }
        return text;
    }

    std::vector<std::pair<size_t, int>> ByNumber() const {
        std::vector<std::pair<size_t, int>> result(numbers.begin(), numbers.end());
        std::sort(result.begin(), result.end(),
                  [](const auto& a, const auto& b) { return a.second < b.second; });
        return result;
    }

    // The directions of the model's axes, at the lower left.
    void DrawAxes() const {
        constexpr double kLength = 44;
        const GPosition origin = {70, kTitleHeight + kSceneHeight - 50, 0};
        const std::array<GVector, 3> axes = {GVector{1, 0, 0}, GVector{0, 1, 0}, GVector{0, 0, 1}};
        const std::array<const char*, 3> names = {"x", "y", "z"};
        for (size_t i = 0; i < axes.size(); ++i) {
            const GVector axis = axes[i] * page * (kLength / page.m_scaling);
            const GPosition name = origin + 1.25 * axis;
            out << "<path d=\"M" << Point(origin) << "L" << Point(origin + axis)
                << "\" stroke=\"#555\" stroke-width=\"1.4\"/>\n<text x=\"" << Pixels(name.m_x)
                << "\" y=\"" << Pixels(name.m_y + 4)
                << "\" text-anchor=\"middle\" font-size=\"13\" fill=\"#555\">" << names[i]
                << "</text>\n";
        }
    }

    double Height() const {
        const double legend =
            kTitleHeight + 2 * kMargin + kLegendRow * static_cast<double>(numbers.size());
        return std::max(kTitleHeight + kSceneHeight, legend);
    }
};

GBox UnionOfModelBoxes(const std::vector<Object>& objects) {
    GBox result = ModelBox(objects.front());
    for (const Object& object : objects) {
        result |= ModelBox(object);
    }
    return result;
}

std::string Title(const Arguments& arguments, const std::vector<Object>& objects,
                  const std::vector<Hit>& hits) {
    const std::string model = Printable(std::filesystem::path(arguments.model).filename().string());
    if (arguments.list) {
        return model + ": " + std::to_string(objects.size()) + " objects";
    }
    return model + ": " + std::to_string(CountTouched(hits)) + " of " +
           std::to_string(objects.size()) + " objects may be touched by a pipe of radius " +
           Decimal(arguments.radius, 3);
}

}  // namespace

void Draw(std::ostream& out, const Arguments& arguments, const std::vector<GBoreLine>& legs,
          const std::vector<Object>& objects, const std::vector<Hit>& hits) {
    const GTransf view = View(arguments.up);
    Drawing drawing = {out, legs, objects, hits, UnionOfModelBoxes(objects), view, {}};
    drawing.page = FitToPage(view, drawing.BoundsIn(view));
    for (const Hit& hit : hits) {
        drawing.numbers.try_emplace(hit.object, static_cast<int>(drawing.numbers.size()) + 1);
    }

    const double width = kSceneWidth + (hits.empty() ? 0 : kLegendWidth);
    const std::string size =
        "width=\"" + Pixels(width) + "\" height=\"" + Pixels(drawing.Height()) + "\"";
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" " << size << " viewBox=\"0 0 "
        << Pixels(width) << " " << Pixels(drawing.Height())
        << "\" font-family=\"DejaVu Sans, Helvetica, Arial, sans-serif\">\n<rect " << size
        << " fill=\"#fcfcfa\"/>\n<text x=\"" << Pixels(kMargin) << "\" y=\"48\" font-size=\"21\" "
        << "fill=\"#222\">" << XmlEscaped(Title(arguments, objects, hits)) << "</text>\n";
    drawing.DrawWireframes();
    drawing.DrawTouched();
    drawing.DrawProbe();
    drawing.DrawBadges();
    drawing.DrawLegend();
    drawing.DrawAxes();
    out << "</svg>\n";
}

}  // namespace kvprobe
