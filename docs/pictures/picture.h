// SPDX-License-Identifier: MIT
#pragma once

#include "docs/pictures/solid.h"

#include <kvgeom/boxes/box2d.h>
#include <kvgeom/maps/transf.h>

#include <sstream>
#include <string>

namespace kvpictures {

/// What a line or a body stands for; each has a colour for light pages and one for dark ones.
enum class Role { kRecord, kResult, kProbe, kPlain, kFaint };

enum class Stroke { kEdge, kHidden, kDashed, kThick };

/// How bodies are drawn: their sides tinted, or their edges alone, dashed.
enum class Manner { kTinted, kDashed };

/// An SVG picture of one or more panels. Lengths on the page are in pixels, y points down there.
class Picture {
  public:
    Picture(double width, double height);

    /// What follows is seen in this view, so that the box of the view fills the frame on the page.
    void Look(const GTransf& view, const GBox& in_view, const GBox2d& frame);
    /// The same for a plan: x to the right, y upwards.
    void LookFromAbove(const GBox2d& bounds, const GBox2d& frame);
    /// The same for bodies in space, all of which fit the frame.
    void LookAt(const std::vector<Solid>& bodies, const GBox2d& frame);

    void Draw(const Solid& body, Role role, Manner manner = Manner::kTinted);
    void Polygon(const Ring& ring, Role role);
    void Outline(const Ring& ring, Role role, Stroke stroke = Stroke::kEdge);
    void Line(const GPosition& from, const GPosition& to, Role role, Stroke stroke = Stroke::kEdge);
    void Arrow(const GPosition& from, const GPosition& to, Role role,
               Stroke stroke = Stroke::kEdge);
    /// The way of a point that turns by an angle about an axis through a centre, with an arrowhead.
    void Arc(const GPosition& from, const GPosition& centre, const GUnitVector& axis, double angle,
             Role role);
    void Dot(const GPosition& at, Role role);
    /// A text beside a point, moved from it by so many pixels; it ends there if moved to the left.
    void Label(const GPosition& at, const GVector2d& by, const std::string& text, Role role);
    /// The same, as code.
    void Code(const GPosition& at, const GVector2d& by, const std::string& text, Role role);
    /// A text in the middle above a frame.
    void Title(const GBox2d& frame, const std::string& text);
    /// The three axes, for a view in space.
    void Axes(const GPosition& origin, double length);

    std::string Svg() const;

  private:
    void Path(const std::string& data, Role role, const char* kind);
    void Head(const GPosition2d& tip, const GVector2d& along, Role role);
    void Text(const GPosition2d& at, double aside, const std::string& text, Role role,
              const char* kind);
    GPosition2d OnPage(const GPosition& p) const;

    double m_width;
    double m_height;
    GTransf m_page;  // from the world to the page
    std::ostringstream m_out;
};

}  // namespace kvpictures
