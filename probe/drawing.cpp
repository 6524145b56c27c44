// SPDX-License-Identifier: MIT
#include "probe/drawing.h"

#include "probe/page.h"
#include "probe/report.h"
#include "probe/sheet.h"
#include "probe/text.h"
#include "probe/window_shape.h"

#include <kvgeom/kvgeom.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <ostream>

namespace kvprobe {
namespace {

// Pixels.
constexpr double kThinnestTube = 3;
constexpr double kBadgeDistance = 62;
constexpr double kBadgeSpacing = 27;

// How far a leg is drawn on either side of the model's middle, in diagonals of the model.
constexpr double kLegReach = 0.62;

// The corners of the six sides of a box, by index as in GBox::GiveCorners.
constexpr size_t kSides[6][4] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4},
                                 {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}};
constexpr size_t kEdges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                  {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};

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

    std::string EdgePath() const {
        std::string path;
        for (const auto& edge : kEdges) {
            path += "M" + PathPoint(corners[edge[0]]) + "L" + PathPoint(corners[edge[1]]);
        }
        return path;
    }
};

std::string RingPath(const Ring& ring, const GTransf& page) {
    std::string path;
    for (const GPosition& p : ring) {
        path += (path.empty() ? "M" : "L") + PathPoint(p * page);
    }
    return path + "Z";
}

// How strongly objects are filled: those that reach beyond a window would cover all others.
double Strength(Relation relation) {
    switch (relation) {
        case Relation::kCrosses:
            return 0.3;
        case Relation::kRangeMeets:
            return 0.5;
        default:
            return 1;
    }
}

// A found object: its number, and the relation of its first hit.
struct Found {
    int number;
    Relation relation;

    // Of a window's objects by what they are, of others by their number.
    const char* Colour() const {
        switch (relation) {
            case Relation::kInside:
                return kInsideColour;
            case Relation::kCrosses:
                return kCrossingColour;
            default:
                return PaletteColour(number);
        }
    }
};

// The part of a leg that is drawn: what is near enough to the model.
struct Span {
    double begin;
    double end;
};

class Drawing {
  public:
    Drawing(std::ostream& out, UpAxis up, const Scene& scene, const Findings& findings)
        : m_out(out),
          m_objects(scene.Model()),
          m_findings(findings),
          m_model_box(BoxAround(scene.Boxes())) {
        const GTransf view = View(up);
        m_page = FitToPage(view, BoundsIn(view), kSceneFrame);
        for (const Hit& hit : findings.hits) {
            const int number = static_cast<int>(m_found.size()) + 1;
            m_found.try_emplace(hit.object, Found{number, hit.relation});
        }
    }

    size_t CountFound() const { return m_found.size(); }

    void Draw(const Sheet& sheet) const {
        DrawWireframes();
        DrawFound();
        DrawShape();
        DrawRange();
        DrawLegs();
        DrawBadges(sheet);
        DrawLegend(sheet);
        DrawAxes(sheet);
    }

  private:
    std::optional<Span> DrawnSpan(const GBoreLine& leg) const {
        const double middle = leg.Evaluate(Interpolate(0.5, m_model_box.m_low, m_model_box.m_high));
        const double reach = kLegReach * GDistance(m_model_box.m_low, m_model_box.m_high);
        const Span span = {std::max(leg.m_back, middle - reach),
                           std::min(leg.m_front, middle + reach)};
        return span.begin < span.end ? std::optional(span) : std::nullopt;
    }

    // The box around all that is drawn, in the view.
    GBox BoundsIn(const GTransf& view) const {
        std::vector<GPosition> points;
        for (const Object& object : m_objects) {
            const Cuboid cuboid(object, view);
            points.insert(points.end(), cuboid.corners.begin(), cuboid.corners.end());
        }
        const auto add = [&points, &view](const GPosition& p) { points.push_back(p * view); };
        for (const GBoreLine& leg : m_findings.legs) {
            if (const std::optional<Span> span = DrawnSpan(leg)) {
                add(leg.Evaluate(span->begin));
                add(leg.Evaluate(span->end));
            }
        }
        for (const Ring& ring : m_findings.shape.rings) {
            std::for_each(ring.begin(), ring.end(), add);
        }
        for (const Segment& edge : m_findings.shape.edges) {
            std::for_each(edge.begin(), edge.end(), add);
        }
        return BuildBox(points.size(), points.data());
    }

    void DrawWireframes() const {
        m_out << "<g fill=\"none\" stroke=\"#8494a6\" stroke-width=\"0.6\" "
                 "stroke-opacity=\"0.6\">\n";
        for (size_t i = 0; i < m_objects.size(); ++i) {
            if (m_found.count(i) == 0) {
                m_out << "<path d=\"" << Cuboid(m_objects[i], m_page).EdgePath() << "\"><title>"
                      << XmlEscaped(m_objects[i].name) << "</title></path>\n";
            }
        }
        m_out << "</g>\n";
    }

    // Far objects first. Sides that face the eye are filled, the more light falls on them the
    // lighter; the edges behind shine through.
    void DrawFound() const {
        std::vector<std::pair<double, size_t>> by_depth;
        for (const auto& [object, found] : m_found) {
            by_depth.emplace_back(Cuboid(m_objects[object], m_page).Centre().m_z, object);
        }
        std::sort(by_depth.begin(), by_depth.end());
        for (const auto& [depth, object] : by_depth) {
            const Found& found = m_found.at(object);
            m_out << "<g stroke=\"" << found.Colour() << "\" stroke-linejoin=\"round\"><title>"
                  << XmlEscaped(m_objects[object].name) << "</title>\n";
            const Cuboid cuboid(m_objects[object], m_page);
            for (const auto& side : kSides) {
                DrawSide(cuboid, side, found);
            }
            m_out << "</g>\n";
        }
    }

    void DrawSide(const Cuboid& cuboid, const size_t (&side)[4], const Found& found) const {
        const GPosition quad[4] = {cuboid.corners[side[0]], cuboid.corners[side[1]],
                                   cuboid.corners[side[2]], cuboid.corners[side[3]]};
        const GVector outward = Interpolate(0.5, quad[0], quad[2]) - cuboid.Centre();
        // From above and the left of the eye; up is -y on the page.
        const GVector light = {-0.35, -0.8, 0.5};
        const double lit = std::clamp(0.5 + 0.5 * std::cos(GiveAngle(outward, light)), 0.0, 1.0);
        m_out << "<path d=\"M" << PathPoint(quad[0]) << "L" << PathPoint(quad[1]) << "L"
              << PathPoint(quad[2]) << "L" << PathPoint(quad[3]) << "Z\" ";
        if (outward.m_z > 0) {
            m_out << "fill=\"" << found.Colour() << "\" fill-opacity=\""
                  << Decimal((0.62 - 0.4 * lit) * Strength(found.relation), 2)
                  << "\" stroke-width=\"1.1\"/>\n";
        } else {
            m_out << "fill=\"none\" stroke-width=\"0.6\" stroke-opacity=\"0.5\"/>\n";
        }
    }

    // A probe that is no pipe: its rings tinted, its edges strong.
    void DrawShape() const {
        m_out << "<g stroke=\"" << kProbeColour << "\" fill=\"" << kProbeTint
              << "\" stroke-width=\"1.8\" stroke-linejoin=\"round\" stroke-linecap=\"round\" "
                 "fill-opacity=\"0.1\">\n";
        for (const Ring& ring : m_findings.shape.rings) {
            m_out << "<path d=\"" << RingPath(ring, m_page) << "\"/>\n";
        }
        for (const Segment& edge : m_findings.shape.edges) {
            m_out << "<path d=\"M" << PathPoint(edge[0] * m_page) << "L"
                  << PathPoint(edge[1] * m_page) << "\"/>\n";
        }
        m_out << "</g>\n";
    }

    void DrawRange() const {
        if (m_findings.range && !m_findings.range->IsNull()) {
            const Object range = {
                "", *m_findings.range, {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}}};
            m_out << "<path fill=\"none\" stroke=\"" << kProbeColour
                  << "\" stroke-width=\"1\" stroke-dasharray=\"5 4\" d=\""
                  << Cuboid(range, m_page).EdgePath() << "\"/>\n";
        }
    }

    // A stroke in three shades, from the rim to the highlight.
    void DrawTube(const GBoreLine& leg, const Span& span,
                  const std::array<const char*, 3>& shades) const {
        constexpr std::array<double, 3> kParts = {1.0, 0.62, 0.2};
        const double width = std::max(2 * leg.m_radius * m_page.m_scaling, kThinnestTube);
        for (size_t i = 0; i < shades.size(); ++i) {
            m_out << "<path d=\"M" << PathPoint(leg.Evaluate(span.begin) * m_page) << "L"
                  << PathPoint(leg.Evaluate(span.end) * m_page) << "\" stroke=\"" << shades[i]
                  << "\" stroke-width=\"" << Pixels(width * kParts[i]) << "\"/>\n";
        }
    }

    // Blue where the pipe runs free, red within the boxes that it may touch.
    void DrawLegs() const {
        m_out << "<g fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
        for (size_t i = 0; i < m_findings.legs.size(); ++i) {
            const GBoreLine& leg = m_findings.legs[i];
            const std::optional<Span> span = DrawnSpan(leg);
            if (!span) {
                continue;
            }
            DrawTube(leg, *span, {"#17324d", "#3f74a8", "#b9d4ec"});
            for (const Hit& hit : m_findings.hits) {
                const Span within = {std::max(hit.enters, span->begin),
                                     std::min(hit.leaves, span->end)};
                if (hit.leg == i && within.begin <= within.end) {
                    DrawTube(leg, within, {"#7a1420", kProbeTint, "#ffd0d0"});
                }
            }
        }
        m_out << "</g>\n";
    }

    // The numbers of the objects: beside a pipe where it meets them, else on the objects.
    void DrawBadges(const Sheet& sheet) const {
        std::vector<GPosition2d> taken;
        if (m_findings.legs.empty()) {
            for (const auto& [object, found] : m_found) {
                const GPosition centre = Cuboid(m_objects[object], m_page).Centre();
                taken.push_back(FreePlace(OnPage(centre), taken));
                sheet.Number(found.number, found.Colour(), taken.back());
            }
        }
        for (size_t i = 0; i < m_findings.legs.size(); ++i) {
            if (const std::optional<Span> span = DrawnSpan(m_findings.legs[i])) {
                DrawBadges(sheet, i, *span);
            }
        }
    }

    struct Badge {
        double along;  // pixels from the leg's begin on the page
        GPosition2d anchor;
        size_t object;
    };

    // In a row beside the leg, joined to the places they mean, pushed apart where they are many.
    void DrawBadges(const Sheet& sheet, size_t leg_index, const Span& span) const {
        const GBoreLine& leg = m_findings.legs[leg_index];
        const GPosition2d from = OnPage(leg.Evaluate(span.begin) * m_page);
        GVector2d run = OnPage(leg.Evaluate(span.end) * m_page) - from;
        run = run.GetLength() < 1 ? GVector2d{1, 0} : run / run.GetLength();  // seen end on: aside
        const GVector2d above = {run.m_y, -run.m_x};
        const GVector2d aside = above.m_y > 0 ? -above : above;

        std::vector<Badge> badges;
        for (const Hit& hit : m_findings.hits) {
            if (hit.leg == leg_index) {
                const double middle =
                    (std::max(hit.enters, span.begin) + std::min(hit.leaves, span.end)) / 2;
                const GPosition2d anchor =
                    OnPage(leg.Evaluate(std::clamp(middle, span.begin, span.end)) * m_page);
                badges.push_back({(anchor - from) % run, anchor, hit.object});
            }
        }
        std::stable_sort(badges.begin(), badges.end(),
                         [](const Badge& a, const Badge& b) { return a.along < b.along; });
        double last = -kBadgeSpacing;
        for (const Badge& badge : badges) {
            last = std::max(badge.along, last + kBadgeSpacing);
            const GPosition2d centre =
                badge.anchor + (last - badge.along) * run + kBadgeDistance * aside;
            m_out << "<path d=\"M" << PathPoint(badge.anchor) << "L" << PathPoint(centre)
                  << "\" stroke=\"#333\" stroke-width=\"0.9\"/>\n<circle cx=\""
                  << Pixels(badge.anchor.m_x) << "\" cy=\"" << Pixels(badge.anchor.m_y)
                  << "\" r=\"2.2\" fill=\"#333\"/>\n";
            const Found& found = m_found.at(badge.object);
            sheet.Number(found.number, found.Colour(), centre);
        }
    }

    void DrawLegend(const Sheet& sheet) const {
        std::vector<LegendEntry> entries;
        for (const auto& [object, found] : m_found) {
            entries.push_back({found.number, found.Colour(), m_objects[object].name,
                               m_findings.legs.empty() ? InWords(found.relation) : Spans(object)});
        }
        sheet.Legend(entries);
    }

    // Where an object is entered and left, leg by leg.
    std::string Spans(size_t object) const {
        std::string text;
        for (const Hit& hit : m_findings.hits) {
            if (hit.object == object) {
                text += text.empty() ? "" : "; ";
                if (m_findings.legs.size() > 1) {
                    text += "leg " + std::to_string(hit.leg + 1) + ": ";
                }
                text += Decimal(hit.enters, 2) + " to " + Decimal(hit.leaves, 2);
            }
        }
        return text;
    }

    // The directions of the model's axes, at the lower left.
    void DrawAxes(const Sheet& sheet) const {
        constexpr double kLength = 44;
        const GPosition origin = {70, kTitleHeight + kSceneHeight - 50, 0};
        const std::array<std::pair<const char*, GVector>, 3> axes = {
            {{"x", {1, 0, 0}}, {"y", {0, 1, 0}}, {"z", {0, 0, 1}}}};
        for (const auto& [name, direction] : axes) {
            const GVector axis = direction * m_page * (kLength / m_page.m_scaling);
            m_out << "<path d=\"M" << PathPoint(origin) << "L" << PathPoint(origin + axis)
                  << "\" stroke=\"#555\" stroke-width=\"1.4\"/>\n";
            sheet.Text(13, "#555", OnPage(origin + 1.25 * axis + GVector{0, 4, 0}), name,
                       "text-anchor=\"middle\" ");
        }
    }

    std::ostream& m_out;
    const std::vector<Object>& m_objects;
    const Findings& m_findings;
    GBox m_model_box;  // around all objects, in the model
    GTransf m_page;    // from the model to the page
    std::map<size_t, Found> m_found;
};

}  // namespace

void Draw(std::ostream& out, const Arguments& arguments, const Scene& scene,
          const Findings& findings) {
    const Drawing drawing(out, arguments.up, scene, findings);
    const Sheet sheet(out, Title(arguments, scene, findings), drawing.CountFound());
    drawing.Draw(sheet);
}

}  // namespace kvprobe
