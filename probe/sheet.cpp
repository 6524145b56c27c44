// SPDX-License-Identifier: MIT
#include "probe/sheet.h"

#include "probe/page.h"
#include "probe/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>

namespace kvprobe {
namespace {

// Pixels.
constexpr double kLegendWidth = 480;
constexpr double kLegendRow = 44;
// Of more objects than this the legend gives the names only, in closer rows.
constexpr size_t kMostRowsWithDetails = 18;
constexpr double kCloseLegendRow = 28;
constexpr double kBadgeRadius = 12;

constexpr size_t kLegendCharacters = 50;

// A qualitative palette (Tableau's ten, less the grey and the reds, which the probe has).
constexpr std::array<const char*, 8> kPalette = {"#4e79a7", "#f28e2b", "#59a14f", "#b07aa1",
                                                 "#edc948", "#76b7b2", "#9c755f", "#ff9da7"};

bool HasDetails(size_t legend_entries) {
    return legend_entries <= kMostRowsWithDetails;
}

double LegendRow(size_t legend_entries) {
    return HasDetails(legend_entries) ? kLegendRow : kCloseLegendRow;
}

}  // namespace

Sheet::Sheet(std::ostream& out, const std::string& title, size_t legend_entries) : m_out(out) {
    const double legend = kTitleHeight + 2 * kMargin +
                          LegendRow(legend_entries) * static_cast<double>(legend_entries);
    const std::string width = Pixels(kSceneWidth + (legend_entries == 0 ? 0 : kLegendWidth));
    const std::string height = Pixels(std::max(kTitleHeight + kSceneHeight, legend));
    const std::string size = "width=\"" + width + "\" height=\"" + height + "\"";
    m_out << "<svg xmlns=\"http://www.w3.org/2000/svg\" " << size << " viewBox=\"0 0 " << width
          << " " << height << "\" font-family=\"DejaVu Sans, Helvetica, Arial, sans-serif\">\n"
          << "<rect " << size << " fill=\"#fcfcfa\"/>\n";
    Text(21, "#222", {kMargin, 48}, title);
}

Sheet::~Sheet() {
    m_out << "</svg>\n";
}

void Sheet::Text(int size, const char* colour, const GPosition2d& at, const std::string& text,
                 const char* style) const {
    m_out << "<text x=\"" << Pixels(at.m_x) << "\" y=\"" << Pixels(at.m_y) << "\" " << style
          << "font-size=\"" << size << "\" fill=\"" << colour << "\">" << XmlEscaped(text)
          << "</text>\n";
}

void Sheet::Number(int number, const char* colour, const GPosition2d& centre) const {
    m_out << "<circle cx=\"" << Pixels(centre.m_x) << "\" cy=\"" << Pixels(centre.m_y) << "\" r=\""
          << Pixels(kBadgeRadius) << "\" fill=\"" << colour
          << "\" stroke=\"#fff\" stroke-width=\"1.5\"/>\n";
    Text(number < 100 ? 12 : 10, "#fff", {centre.m_x, centre.m_y + 4.5}, std::to_string(number),
         "text-anchor=\"middle\" font-weight=\"bold\" ");
}

void Sheet::Legend(const std::vector<LegendEntry>& entries) const {
    constexpr double kTextLeft = kSceneWidth + 34;
    const bool has_details = HasDetails(entries.size());
    for (const LegendEntry& entry : entries) {
        const double y = kTitleHeight + kMargin + LegendRow(entries.size()) * (entry.number - 1);
        Number(entry.number, entry.colour, {kSceneWidth + kBadgeRadius, y});
        Text(13, "#222", {kTextLeft, has_details ? y - 2 : y + 5},
             Shortened(entry.name, kLegendCharacters));
        if (has_details) {
            Text(12, "#667", {kTextLeft, y + 14}, entry.details);
        }
    }
}

GPosition2d FreePlace(const GPosition2d& wanted, const std::vector<GPosition2d>& taken) {
    constexpr int kMostTries = 200;
    GPosition2d place = wanted;
    for (int i = 1; i < kMostTries; ++i) {
        const bool is_free = std::none_of(taken.begin(), taken.end(), [&](const GPosition2d& p) {
            return GDistance(p, place) < 2 * kBadgeRadius;
        });
        if (is_free) {
            break;
        }
        const double angle = 0.7 * i;
        place = wanted + 1.6 * angle * GVector2d{std::cos(angle), std::sin(angle)};
    }
    return place;
}

const char* PaletteColour(int number) {
    return kPalette[static_cast<size_t>(number - 1) % kPalette.size()];
}

}  // namespace kvprobe
