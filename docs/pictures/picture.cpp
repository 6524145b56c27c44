// SPDX-License-Identifier: MIT
#include "docs/pictures/picture.h"

#include "probe/page.h"
#include "probe/text.h"

#include <kvgeom/kvgeom.h>

#include <algorithm>
#include <cmath>

namespace kvpictures {
namespace {

using kvprobe::PathPoint;
using kvprobe::Pixels;

// Pixels.
constexpr double kArrowhead = 10;
constexpr double kArrowheadHalfWidth = 3.4;
constexpr double kTextShift = 4.5;  // from the middle of a text to its line
constexpr double kLeastShiftToSide = 4;

// Sides that meet at a smaller angle, in radians, are facets of a curved one.
constexpr double kSmoothAngle = 0.35;

constexpr const char* kStyle = R"(<style>
.sheet { fill: #ffffff }
.record { fill: #2563b8; stroke: #2563b8 }
.result { fill: #b8540a; stroke: #b8540a }
.probe { fill: #b3263a; stroke: #b3263a }
.plain { fill: #2b333c; stroke: #2b333c }
.faint { fill: #7d8996; stroke: #7d8996 }
.text { stroke: #ffffff }
@media (prefers-color-scheme: dark) {
.sheet { fill: #1c1e22 }
.record { fill: #79b0f5; stroke: #79b0f5 }
.result { fill: #f2a65a; stroke: #f2a65a }
.probe { fill: #ff8592; stroke: #ff8592 }
.plain { fill: #d5dbe1; stroke: #d5dbe1 }
.faint { fill: #7f8a96; stroke: #7f8a96 }
.text { stroke: #1c1e22 }
}
.side { stroke: none; fill-opacity: 0.1 }
.edge, .hidden, .dashed, .thick { fill: none; stroke-linejoin: round; stroke-linecap: round }
.edge { stroke-width: 1.5 }
.thick { stroke-width: 3 }
.hidden { stroke-width: 0.8; stroke-dasharray: 2.5 3.5; stroke-opacity: 0.65 }
.dashed { stroke-width: 1.1; stroke-dasharray: 6 4 }
.head, .dot { stroke: none }
.text { stroke-width: 4; stroke-linejoin: round; paint-order: stroke;
  font: 14px "DejaVu Sans", Verdana, sans-serif }
.code { font: 13px "DejaVu Sans Mono", Menlo, Consolas, monospace }
.title { font-weight: bold }
</style>
)";

const char* Name(Role role) {
    switch (role) {
        case Role::kRecord:
            return "record";
        case Role::kResult:
            return "result";
        case Role::kProbe:
            return "probe";
        case Role::kPlain:
            return "plain";
        default:
            return "faint";
    }
}

const char* Name(Stroke stroke) {
    switch (stroke) {
        case Stroke::kHidden:
            return "hidden";
        case Stroke::kDashed:
            return "dashed";
        case Stroke::kThick:
            return "thick";
        default:
            return "edge";
    }
}

std::string RingPath(const Ring& on_page) {
    std::string path;
    for (const GPosition& p : on_page) {
        path += (path.empty() ? "M" : "L") + PathPoint(p);
    }
    return path + "Z";
}

// A side of a body on the page; z points to the reader.
struct Side {
    Ring ring;
    GVector outward;

    bool FacesReader() const { return outward.m_z > 0; }
};

std::vector<Side> SidesOnPage(const Solid& body, const GTransf& page) {
    std::vector<Side> sides;
    Ring all;
    for (const Ring& ring : body) {
        Ring on_page(ring.size());
        MapPositions(page, ring.data(), ring.size(), on_page.data());
        all.insert(all.end(), on_page.begin(), on_page.end());
        sides.push_back({on_page, {0, 0, 0}});
    }
    const GPosition centre = Mean(all);
    for (Side& side : sides) {
        const Ring& r = side.ring;
        const GVector normal = (r[1] - r[0]) * (r[2] - r[1]);
        side.outward = normal % (r[0] - centre) < 0 ? -normal : normal;
    }
    return sides;
}

struct Edge {
    GPosition from;
    GPosition to;
    const Side* one;
    const Side* other;

    bool Joins(const GPosition& p, const GPosition& q) const {
        return (from.IsEqual(p) && to.IsEqual(q)) || (from.IsEqual(q) && to.IsEqual(p));
    }
    bool IsVisible() const { return one->FacesReader() || other->FacesReader(); }
    // Edges between the facets of a curved side show where it turns away from the reader.
    bool IsDrawn() const {
        return GiveAngle(one->outward, other->outward) > kSmoothAngle ||
               one->FacesReader() != other->FacesReader();
    }
};

std::vector<Edge> EdgesOf(const std::vector<Side>& sides) {
    std::vector<Edge> edges;
    for (const Side& side : sides) {
        for (size_t i = 0; i < side.ring.size(); ++i) {
            const GPosition& p = side.ring[i];
            const GPosition& q = side.ring[(i + 1) % side.ring.size()];
            const auto known = std::find_if(edges.begin(), edges.end(),
                                            [&](const Edge& e) { return e.Joins(p, q); });
            if (known == edges.end()) {
                edges.push_back({p, q, &side, &side});
            } else {
                known->other = &side;
            }
        }
    }
    return edges;
}

// The edges one after the other, joined where they follow each other, for dashes to run on.
template <class Choice>
std::string EdgePath(const std::vector<Edge>& edges, Choice is_chosen) {
    std::string path;
    std::string last;
    for (const Edge& edge : edges) {
        if (edge.IsDrawn() && is_chosen(edge)) {
            const std::string from = PathPoint(edge.from);
            path += from == last ? "" : "M" + from;
            last = PathPoint(edge.to);
            path += "L" + last;
        }
    }
    return path;
}

}  // namespace

Picture::Picture(double width, double height) : m_width(width), m_height(height), m_page() {}

void Picture::Look(const GTransf& view, const GBox& in_view, const GBox2d& frame) {
    m_page = kvprobe::FitToPage(view, in_view, frame);
}

void Picture::LookFromAbove(const GBox2d& bounds, const GBox2d& frame) {
    GBox box;
    box.Convert3d(bounds);
    Look(TranslateTransf({0, 0, 0}), box, frame);
}

void Picture::LookAt(const std::vector<Solid>& bodies, const GBox2d& frame) {
    const GTransf view = kvprobe::View(kvprobe::UpAxis::kZ);
    Ring points;
    for (const Solid& body : bodies) {
        for (const Ring& ring : body) {
            for (const GPosition& p : ring) {
                points.push_back(p * view);
            }
        }
    }
    Look(view, Range(points), frame);
}

void Picture::Draw(const Solid& body, Role role, Manner manner) {
    const std::vector<Side> sides = SidesOnPage(body, m_page);
    const std::vector<Edge> edges = EdgesOf(sides);
    if (manner == Manner::kDashed) {
        Path(EdgePath(edges, [](const Edge&) { return true; }), role, "dashed");
        return;
    }
    Path(EdgePath(edges, [](const Edge& e) { return !e.IsVisible(); }), role, "hidden");
    for (const Side& side : sides) {
        if (side.FacesReader()) {
            Path(RingPath(side.ring), role, "side");
        }
    }
    Path(EdgePath(edges, [](const Edge& e) { return e.IsVisible(); }), role, "edge");
}

void Picture::Polygon(const Ring& ring, Role role) {
    Ring on_page(ring.size());
    MapPositions(m_page, ring.data(), ring.size(), on_page.data());
    Path(RingPath(on_page), role, "side");
    Path(RingPath(on_page), role, "edge");
}

void Picture::Outline(const Ring& ring, Role role, Stroke stroke) {
    Ring on_page(ring.size());
    MapPositions(m_page, ring.data(), ring.size(), on_page.data());
    Path(RingPath(on_page), role, Name(stroke));
}

void Picture::Line(const GPosition& from, const GPosition& to, Role role, Stroke stroke) {
    Path("M" + PathPoint(OnPage(from)) + "L" + PathPoint(OnPage(to)), role, Name(stroke));
}

void Picture::Arrow(const GPosition& from, const GPosition& to, Role role, Stroke stroke) {
    const GPosition2d tip = OnPage(to);
    const GVector2d run = tip - OnPage(from);
    const GVector2d along = run / run.GetLength();
    // The line ends within the head, so as not to blunt it.
    Path("M" + PathPoint(OnPage(from)) + "L" + PathPoint(tip - 0.7 * kArrowhead * along), role,
         Name(stroke));
    Head(tip, along, role);
}

void Picture::Arc(const GPosition& from, const GPosition& centre, const GUnitVector& axis,
                  double angle, Role role) {
    constexpr int kSteps = 48;
    std::string path;
    GPosition2d before = OnPage(from);
    GPosition2d tip = before;
    for (int i = 0; i <= kSteps; ++i) {
        before = tip;
        tip = OnPage(from * RotateTransf(angle * i / kSteps, axis, centre));
        path += (i == 0 ? "M" : "L") + PathPoint(tip);
    }
    Path(path, role, "edge");
    const GVector2d run = tip - before;
    const GVector2d along = run / run.GetLength();
    Head(tip + 0.4 * kArrowhead * along, along, role);
}

void Picture::Dot(const GPosition& at, Role role) {
    const GPosition2d p = OnPage(at);
    m_out << "<circle class=\"" << Name(role) << " dot\" cx=\"" << Pixels(p.m_x) << "\" cy=\""
          << Pixels(p.m_y) << "\" r=\"3.2\"/>\n";
}

void Picture::Label(const GPosition& at, const GVector2d& by, const std::string& text, Role role) {
    Text(OnPage(at) + by, by.m_x, text, role, "");
}

void Picture::Code(const GPosition& at, const GVector2d& by, const std::string& text, Role role) {
    Text(OnPage(at) + by, by.m_x, text, role, " code");
}

void Picture::Title(const GBox2d& frame, const std::string& text) {
    constexpr double kDistance = 16;
    Text({(frame.m_low.m_x + frame.m_high.m_x) / 2, frame.m_low.m_y - kDistance}, 0, text,
         Role::kPlain, " code title");
}

void Picture::Axes(const GPosition& origin, double length) {
    const std::pair<const char*, GVector> axes[] = {
        {"x", {1, 0, 0}}, {"y", {0, 1, 0}}, {"z", {0, 0, 1}}};
    for (const auto& [name, axis] : axes) {
        Arrow(origin, origin + length * axis, Role::kFaint);
        Label(origin + 1.28 * length * axis, {0, 0}, name, Role::kFaint);
    }
}

std::string Picture::Svg() const {
    const std::string width = Pixels(m_width);
    const std::string height = Pixels(m_height);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
           "\" viewBox=\"0 0 " + width + " " + height + "\">\n" + kStyle +
           "<rect class=\"sheet\" width=\"" + width + "\" height=\"" + height + "\"/>\n" +
           m_out.str() + "</svg>\n";
}

void Picture::Path(const std::string& data, Role role, const char* kind) {
    if (!data.empty()) {
        m_out << "<path class=\"" << Name(role) << " " << kind << "\" d=\"" << data << "\"/>\n";
    }
}

void Picture::Head(const GPosition2d& tip, const GVector2d& along, Role role) {
    const GVector2d aside = kArrowheadHalfWidth * GVector2d{-along.m_y, along.m_x};
    const GPosition2d base = tip - kArrowhead * along;
    Path("M" + PathPoint(tip) + "L" + PathPoint(base + aside) + "L" + PathPoint(base - aside) + "Z",
         role, "head");
}

void Picture::Text(const GPosition2d& at, double aside, const std::string& text, Role role,
                   const char* kind) {
    const char* const anchor = aside > kLeastShiftToSide    ? "start"
                               : aside < -kLeastShiftToSide ? "end"
                                                            : "middle";
    m_out << "<text class=\"" << Name(role) << " text" << kind << "\" x=\"" << Pixels(at.m_x)
          << "\" y=\"" << Pixels(at.m_y + kTextShift) << "\" text-anchor=\"" << anchor << "\">"
          << kvprobe::XmlEscaped(text) << "</text>\n";
}

GPosition2d Picture::OnPage(const GPosition& p) const {
    return kvprobe::OnPage(p * m_page);
}

}  // namespace kvpictures
