// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/points/position2d.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace kvprobe {

/// An object that was found, as a drawing names it.
struct LegendEntry {
    int number;  ///< from 1
    const char* colour;
    std::string name;
    std::string details;
};

/// What all drawings have in common: an SVG page with a title, numbered objects, and beside the
/// scene a legend that says what the numbers mean. Lengths are in pixels.
class Sheet {
  public:
    /// Begins the page, of a size for so many legend entries.
    Sheet(std::ostream& out, const std::string& title, size_t legend_entries);
    /// Ends it.
    ~Sheet();
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    void Text(int size, const char* colour, const GPosition2d& at, const std::string& text,
              const char* style = "") const;
    /// The number of an object, in a circle.
    void Number(int number, const char* colour, const GPosition2d& centre) const;
    void Legend(const std::vector<LegendEntry>& entries) const;

  private:
    std::ostream& m_out;
};

/// The place nearest to the wanted one, on a spiral around it, where none of the numbers taken
/// stands.
GPosition2d FreePlace(const GPosition2d& wanted, const std::vector<GPosition2d>& taken);

/// The colour of the found object with a number.
const char* PaletteColour(int number);

// The colours of the probe, and of the objects of a window by what they are.
constexpr const char* kProbeColour = "#b3263a";
constexpr const char* kProbeTint = "#d8404f";
constexpr const char* kInsideColour = "#59a14f";
constexpr const char* kCrossingColour = "#f28e2b";

}  // namespace kvprobe
