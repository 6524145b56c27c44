// SPDX-License-Identifier: MIT
#include "probe/plan_drawing.h"

#include "probe/page.h"
#include "probe/report.h"
#include "probe/sheet.h"
#include "probe/text.h"

#include <kvgeom/kvgeom.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <ostream>

namespace kvprobe {
namespace {

// Pixels. The plan leaves room below for the scale bar.
constexpr double kFooter = 60;
constexpr double kGrid = 70;  // the least distance of grid lines

constexpr int kMostGridLines = 40;
constexpr double kSmallestExtent = 1e-6;

GVector2d Extent(const GBox2d& box) {
    return box.m_high - box.m_low;
}

double Area(const GBox2d& box) {
    return Extent(box).m_x * Extent(box).m_y;
}

GBox2d BoxAround(const Plan& plan) {
    GBox2d result = plan.boxes.front();
    for (const GBox2d& box : plan.boxes) {
        result |= box;
    }
    return plan.window ? result | *plan.window : result;
}

// Seen from above, the second level coordinate points down the page if it is the z of a model whose
// y points up, else up the page.
GTransf2d FitToPage(const GBox2d& bounds, UpAxis up) {
    const GVector2d extent = Extent(bounds);
    const double width = kSceneWidth - 2 * kMargin;
    const double height = kSceneHeight - 2 * kMargin - kFooter;
    const double fit = std::min(width / std::max(extent.m_x, kSmallestExtent),
                                height / std::max(extent.m_y, kSmallestExtent));
    const GPosition2d origin = {0, 0};
    const GPosition2d centre = {kSceneWidth / 2, kTitleHeight + kMargin + height / 2};
    const GTransf2d upright =
        up == UpAxis::kY ? TranslateTransf2d({0, 0}) : ReflectTransf2d(GUnitVector2d{1, 0});
    return TranslateTransf2d(origin - Interpolate(0.5, bounds.m_low, bounds.m_high)) *
           ScaleTransf2d(fit) * upright * TranslateTransf2d(centre - origin);
}

// The least of 1, 2, 5, 10, 20, 50, ... that is not below the value.
double RoundUp(double value) {
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double digit : {1.0, 2.0, 5.0}) {
        if (digit * power >= value) {
            return digit * power;
        }
    }
    return 10 * power;
}

class PlanDrawing {
  public:
    PlanDrawing(std::ostream& out, const Scene& scene, const Findings& findings)
        : m_out(out),
          m_objects(scene.Model()),
          m_findings(findings),
          m_bounds(BoxAround(*findings.plan)),
          m_page(FitToPage(m_bounds, findings.plan->up)),
          m_step(RoundUp(kGrid / m_page.m_scaling)),
          m_decimals(std::max(0, static_cast<int>(-std::floor(std::log10(m_step))))) {}

    void Draw(const Sheet& sheet) const {
        DrawGrid(sheet);
        DrawBoxes();
        DrawFound();
        DrawWindow();
        DrawNumbers(sheet);
        DrawScaleBar(sheet);
        DrawAxes(sheet);
    }

  private:
    GBox2d OnPage(const GBox2d& box) const { return box * m_page; }

    void DrawRectangle(const GBox2d& on_page, const std::string& style,
                       const std::string& name = "") const {
        const GVector2d extent = Extent(on_page);
        m_out << "<rect x=\"" << Pixels(on_page.m_low.m_x) << "\" y=\"" << Pixels(on_page.m_low.m_y)
              << "\" width=\"" << Pixels(extent.m_x) << "\" height=\"" << Pixels(extent.m_y)
              << "\" " << style << "><title>" << XmlEscaped(name) << "</title></rect>\n";
    }

    // The values of the grid within a range, few even where the numbers are too large to count by
    // the step.
    std::vector<double> GridValues(double low, double high) const {
        std::vector<double> values;
        const double first = std::ceil(low / m_step);
        for (int i = 0; i < kMostGridLines && (first + i) * m_step <= high; ++i) {
            values.push_back((first + i) * m_step);
        }
        return values;
    }

    void DrawGridLine(const GPosition2d& from, const GPosition2d& to) const {
        m_out << "<path d=\"M" << PathPoint(from) << "L" << PathPoint(to)
              << "\" stroke=\"#d9dee4\" stroke-width=\"0.7\"/>\n";
    }

    void DrawGrid(const Sheet& sheet) const {
        constexpr double kOverhang = 12;
        const GBox2d page = OnPage(m_bounds);
        const GVector2d out = {kOverhang, kOverhang};
        const GPosition2d low = page.m_low - out;
        const GPosition2d high = page.m_high + out;
        for (const double x : GridValues(m_bounds.m_low.m_x, m_bounds.m_high.m_x)) {
            const double at = (GPosition2d{x, m_bounds.m_low.m_y} * m_page).m_x;
            DrawGridLine({at, low.m_y}, {at, high.m_y});
            sheet.Text(11, "#89929c", {at, high.m_y + 14}, Decimal(x, m_decimals),
                       "text-anchor=\"middle\" ");
        }
        for (const double y : GridValues(m_bounds.m_low.m_y, m_bounds.m_high.m_y)) {
            const double at = (GPosition2d{m_bounds.m_low.m_x, y} * m_page).m_y;
            DrawGridLine({low.m_x, at}, {high.m_x, at});
            sheet.Text(11, "#89929c", {low.m_x - 6, at + 4}, Decimal(y, m_decimals),
                       "text-anchor=\"end\" ");
        }
    }

    // The large first, so that the small are not covered.
    std::vector<size_t> LargestFirst() const {
        const std::vector<GBox2d>& boxes = m_findings.plan->boxes;
        std::vector<size_t> order(boxes.size());
        std::iota(order.begin(), order.end(), 0U);
        std::stable_sort(order.begin(), order.end(),
                         [&boxes](size_t a, size_t b) { return Area(boxes[a]) > Area(boxes[b]); });
        return order;
    }

    void DrawBoxes() const {
        m_out << "<g fill=\"#5b7186\" fill-opacity=\"0.07\" stroke=\"#5b6b7b\" "
                 "stroke-width=\"0.7\" stroke-opacity=\"0.75\">\n";
        for (const size_t i : LargestFirst()) {
            DrawRectangle(OnPage(m_findings.plan->boxes[i]), "", m_objects[i].name);
        }
        m_out << "</g>\n";
    }

    // Of what crosses the window, only the part within is filled: a floor would cover all else.
    void DrawFound() const {
        for (const Hit& hit : m_findings.hits) {
            const std::string colour = Colour(hit.relation);
            const GBox2d& box = m_findings.plan->boxes[hit.object];
            const std::string& name = m_objects[hit.object].name;
            const bool crosses = hit.relation == Relation::kCrosses;
            DrawRectangle(
                OnPage(box & *m_findings.plan->window),
                "fill=\"" + colour + "\" fill-opacity=\"" + (crosses ? "0.03" : "0.4") + "\"",
                name);
            DrawRectangle(OnPage(box),
                          "fill=\"none\" stroke=\"" + colour + "\" stroke-width=\"1.4\"", name);
        }
    }

    void DrawWindow() const {
        if (m_findings.plan->window) {
            DrawRectangle(OnPage(*m_findings.plan->window),
                          std::string("fill=\"") + kProbeTint +
                              "\" fill-opacity=\"0.06\" stroke=\"" + kProbeColour +
                              "\" stroke-width=\"2\"",
                          "window");
        }
    }

    // Each number on its object; of an object that crosses the window, on the part within.
    void DrawNumbers(const Sheet& sheet) const {
        std::vector<GPosition2d> taken;
        std::vector<LegendEntry> entries;
        for (const Hit& hit : m_findings.hits) {
            const int number = static_cast<int>(entries.size()) + 1;
            const char* const colour = Colour(hit.relation);
            const GBox2d shared = m_findings.plan->boxes[hit.object] & *m_findings.plan->window;
            const GBox2d on_page = OnPage(shared);
            taken.push_back(FreePlace(Interpolate(0.5, on_page.m_low, on_page.m_high), taken));
            sheet.Number(number, colour, taken.back());
            entries.push_back({number, colour, m_objects[hit.object].name, InWords(hit.relation)});
        }
        sheet.Legend(entries);
    }

    static const char* Colour(Relation relation) {
        return relation == Relation::kInside ? kInsideColour : kCrossingColour;
    }

    // A bar of two grid steps, one black and one white.
    void DrawScaleBar(const Sheet& sheet) const {
        constexpr double kThickness = 7;
        const double length = m_step * m_page.m_scaling;
        const GPosition2d right = {kSceneWidth - kMargin, kTitleHeight + kSceneHeight - 46};
        GBox2d half = BuildBox2d(right.m_x - 2 * length, right.m_y, right.m_x - length,
                                 right.m_y + kThickness);
        DrawRectangle(half, "fill=\"#333\" stroke=\"#333\"", "scale");
        half += GVector2d{length, 0};
        DrawRectangle(half, "fill=\"#fff\" stroke=\"#333\"", "scale");
        for (const int steps : {0, 1, 2}) {
            sheet.Text(12, "#333", {right.m_x - (2 - steps) * length, right.m_y + 24},
                       Decimal(steps * m_step, steps == 0 ? 0 : m_decimals),
                       "text-anchor=\"middle\" ");
        }
        sheet.Text(12, "#667", {right.m_x - 2 * length - 14, right.m_y + 8}, "units of the model",
                   "text-anchor=\"end\" ");
    }

    // The directions of the level coordinates, at the lower left.
    void DrawAxes(const Sheet& sheet) const {
        constexpr double kLength = 36;
        const GPosition2d origin = {kMargin + 10, kTitleHeight + kSceneHeight - 62};
        const std::pair<const char*, GVector2d> axes[] = {
            {"x", {1, 0}}, {m_findings.plan->up == UpAxis::kY ? "z" : "y", {0, 1}}};
        for (const auto& [name, direction] : axes) {
            const GVector2d axis = direction * m_page * (kLength / m_page.m_scaling);
            m_out << "<path d=\"M" << PathPoint(origin) << "L" << PathPoint(origin + axis)
                  << "\" stroke=\"#555\" stroke-width=\"1.4\"/>\n";
            sheet.Text(13, "#555", origin + 1.3 * axis + GVector2d{0, 4}, name,
                       "text-anchor=\"middle\" ");
        }
    }

    std::ostream& m_out;
    const std::vector<Object>& m_objects;
    const Findings& m_findings;
    GBox2d m_bounds;   // of all that is drawn, in the plan
    GTransf2d m_page;  // from the plan to the page
    double m_step;     // between grid lines, in the model's units
    int m_decimals;    // that a multiple of the step has
};

}  // namespace

void DrawPlan(std::ostream& out, const Arguments& arguments, const Scene& scene,
              const Findings& findings) {
    const PlanDrawing drawing(out, scene, findings);
    const Sheet sheet(out, Title(arguments, scene, findings), findings.hits.size());
    drawing.Draw(sheet);
}

}  // namespace kvprobe
