#include "sectrix_tools/drawings/extrusion_drawing.h"

#include "sectrix_tools/drawings/space/isometry.h"
#include "sectrix_tools/drawings/svg/markup.h"
#include "sectrix_tools/drawings/svg/refusal.h"
#include "sectrix_tools/drawings/svg/svg.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace qel::SectrixTools {

namespace {

using namespace Pictures;
using Sectrix::EndPlane;
using Sectrix::Extrusion;
using Sectrix::Position;
using Sectrix::Profile;

constexpr double kWidth = 1100.0;
constexpr double kHeight = 640.0;
constexpr double kMargin = 40.0;
constexpr double kHeading = 64.0;
constexpr char const* kStyle =
    ".title{font-size:18px;font-weight:bold}"
    ".sub{font-size:13px;fill:#4a5663}"
    ".exterior{stroke:#1d3853;stroke-width:1.6;fill:#cfe2f6;fill-opacity:.55}"
    ".interior{stroke:#b45309;stroke-width:1.3;fill:#fbe3c0;fill-opacity:.8}"
    ".rail-exterior{stroke:#7f9ab5;stroke-width:.8;fill:none}"
    ".rail-interior{stroke:#dd9a4e;stroke-width:.8;fill:none}"
    ".plane{stroke:#2e7d32;stroke-width:1.2;fill:#a5d6a7;fill-opacity:.35}"
    ".normal{stroke:#2e7d32;stroke-width:1.6;fill:none}"
    ".plane-text{fill:#1b5e20;font-size:12px;paint-order:stroke;stroke:#fff;stroke-width:3}";

/// A profile in a picture: those of its positions that have a place there, and the class that it is drawn in.
struct DrawnProfile {
    std::vector<Position> m_positions;
    std::string m_class;
    /// Counts the sections, so that rails connect profiles of one section only.
    std::size_t m_section;
};

std::vector<DrawnProfile> DrawnProfiles(Extrusion const& extrusion) {
    std::vector<DrawnProfile> drawn;
    for (std::size_t i = 0; i < extrusion.Sections().size(); ++i) {
        auto const& section = extrusion.Sections()[i];
        for (Profile const& profile : section.Profiles()) {
            DrawnProfile& target = drawn.emplace_back();
            target.m_class = section.Exterior() ? "exterior" : "interior";
            target.m_section = i;
            std::copy_if(profile.Positions().begin(), profile.Positions().end(),
                         std::back_inserter(target.m_positions),
                         [](Position const& position) { return HasPlace(VectorTo(position)); });
        }
    }
    return drawn;
}

/// An end plane in a picture: a rectangle, and the way along its normal.
struct DrawnPlane {
    EndPlane m_plane;
    std::array<Vector, 4> m_corners;
    Vector m_tip;
};

/// A rectangle around the exterior profile that starts nearest to the plane, as far as it reaches from the origin.
DrawnPlane PlaceInPicture(EndPlane const& plane, std::vector<DrawnProfile> const& profiles) {
    Vector const origin = VectorTo(plane.Origin());
    Vector const normal = Unit(VectorTo(plane.Normal()));
    constexpr double kUpright = 0.999; // more than this of a unit vector along z leaves no direction across it
    bool const isLevel = std::abs(normal[2]) > kUpright;
    Vector const across = Unit(Cross(isLevel ? Vector{1, 0, 0} : Vector{0, 0, 1}, normal));
    Vector const up = Cross(normal, across);
    std::vector<Position> nearest;
    for (DrawnProfile const& profile : profiles)
        if (profile.m_class == "exterior" && !profile.m_positions.empty() &&
            (nearest.empty() ||
             plane.Origin().Distance2(profile.m_positions[0]) < plane.Origin().Distance2(nearest[0])))
            nearest = profile.m_positions;
    double left = 0, right = 0, low = 0, high = 0;
    for (Position const& position : nearest) {
        Vector const way = VectorTo(position) - origin;
        left = std::min(left, Product(way, across));
        right = std::max(right, Product(way, across));
        low = std::min(low, Product(way, up));
        high = std::max(high, Product(way, up));
    }
    double const border = 0.15 * std::max({right - left, high - low, 1e-3});
    auto const corner = [&](double x, double y) { return Moved(Moved(origin, across, x), up, y); };
    return {plane,
            {corner(left - border, low - border), corner(right + border, low - border),
             corner(right + border, high + border), corner(left - border, high + border)},
            Moved(origin, normal, 4 * border)};
}

void DrawProfiles(Svg& svg, std::vector<DrawnProfile> const& profiles, View const& view) {
    auto const place = [&view](Position const& position) { return view(Isometric(VectorTo(position))); };
    for (std::size_t i = 0; i < profiles.size(); ++i) {
        DrawnProfile const& profile = profiles[i];
        std::vector<Point> corners;
        std::transform(profile.m_positions.begin(), profile.m_positions.end(), std::back_inserter(corners), place);
        svg.Polygon(corners, profile.m_class);
        if (i + 1 == profiles.size() || profiles[i + 1].m_section != profile.m_section ||
            profiles[i + 1].m_positions.size() != corners.size())
            continue;
        std::vector<std::pair<Point, Point>> rails;
        for (std::size_t k = 0; k < corners.size(); ++k)
            rails.emplace_back(corners[k], place(profiles[i + 1].m_positions[k]));
        svg.Segments(rails, "rail-" + profile.m_class);
    }
}

void DrawPlane(Svg& svg, DrawnPlane const& drawn, View const& view) {
    std::vector<Point> corners;
    for (Vector const& corner : drawn.m_corners)
        corners.push_back(view(Isometric(corner)));
    svg.Polygon(corners, "plane");
    Point const foot = view(Isometric(VectorTo(drawn.m_plane.Origin())));
    Point const tip = view(Isometric(drawn.m_tip));
    svg.Segments({{foot, tip}}, "normal");
    svg.Circle(foot, 3, "normal");
    svg.Text({tip.x, tip.y + (tip.y < foot.y ? -8 : 16)},
             std::string(drawn.m_plane.IsStart() ? "start" : "end") + ", skew " + Number(drawn.m_plane.Skew()),
             "plane-text", "middle");
}

std::string Draw(std::vector<DrawnProfile> const& profiles, std::vector<DrawnPlane> const& planes,
                 std::vector<Point> const& points, std::string const& title, std::string const& unit) {
    Svg svg(kWidth, kHeight, title, kStyle);
    svg.Text({kMargin, kMargin}, title, "title");
    svg.Text({kMargin, kHeading}, "exterior blue, interior orange, end planes green with their normals", "sub");
    View const view = FitView(points, {2 * kMargin, kHeading + kMargin},
                              {kWidth - 4 * kMargin, kHeight - kHeading - 3 * kMargin});
    DrawProfiles(svg, profiles, view);
    for (DrawnPlane const& plane : planes)
        DrawPlane(svg, plane, view);
    svg.ScaleBar({kMargin, kHeight - kMargin / 2}, 200, view.Scale(), unit + " along the axes");
    return svg.Document();
}

/// Where the corners of profiles and planes stand for the viewer.
std::vector<Point> SeenPoints(std::vector<DrawnProfile> const& profiles, std::vector<DrawnPlane> const& planes) {
    std::vector<Point> points;
    for (DrawnProfile const& profile : profiles)
        for (Position const& position : profile.m_positions)
            points.push_back(Isometric(VectorTo(position)));
    for (DrawnPlane const& plane : planes) {
        std::transform(plane.m_corners.begin(), plane.m_corners.end(), std::back_inserter(points), Isometric);
        points.push_back(Isometric(plane.m_tip));
    }
    return points;
}

} // namespace

Drawing DrawExtrusion(Extrusion const& extrusion, std::vector<EndPlane> const& planes, std::string const& title,
                      std::string const& unit) {
    Drawing drawing;
    auto const profiles = DrawnProfiles(extrusion);
    std::vector<DrawnPlane> drawn;
    for (EndPlane const& plane : planes) {
        if (HasPlace(VectorTo(plane.Origin())) && HasPlace(VectorTo(plane.Normal())))
            drawn.push_back(PlaceInPicture(plane, profiles));
        else
            drawing.m_findings.push_back(LeftOut("plane-left-out", std::string("the ") +
                                                                       (plane.IsStart() ? "start" : "end") +
                                                                       " plane has no finite origin and normal"));
    }
    auto const points = SeenPoints(profiles, drawn);
    if (points.empty())
        return NothingToDraw("no position has a place in a picture");
    drawing.m_svg = Draw(profiles, drawn, points, title, unit);
    return drawing;
}

} // namespace qel::SectrixTools
