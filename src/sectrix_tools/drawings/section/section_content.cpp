#include "sectrix_tools/drawings/section/section_content.h"

#include "sectrix_tools/measures/loop_measures.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <set>
#include <utility>

namespace qel::SectrixTools::Pictures {

namespace {

using Sectrix::CrossSection;
using Sectrix::Loop;
using Sectrix::Vertex;

constexpr std::size_t kTints = 7;

/// An edge between two pool indices, the lesser first: both loops beside a cut carry it.
using Edge = std::pair<int, int>;

/// Calls `visit(from, to)` for each edge of a loop, with the vertex that it leaves and the one at which it arrives.
template <class Visit>
void VisitEdges(Loop const& loop, Visit visit) {
    auto const& vertices = loop.Vertices();
    for (std::size_t i = 0; i < vertices.size(); ++i)
        visit(vertices[i], vertices[(i + 1) % vertices.size()]);
}

Edge EdgeOf(Vertex const& from, Vertex const& to) {
    return std::minmax(from.Index(), to.Index());
}

/// A tint for each loop, another one than those of its neighbours that have theirs already, as far as the tints go.
std::vector<std::size_t> ChooseTints(std::vector<Loop> const& loops) {
    // Two loops share an edge where they are well; of any number no more than the tints have a say.
    std::map<Edge, std::vector<std::size_t>> carriers;
    for (std::size_t loop = 0; loop < loops.size(); ++loop)
        VisitEdges(loops[loop], [&](Vertex const& from, Vertex const& to) {
            if (auto& list = carriers[EdgeOf(from, to)]; list.size() < kTints)
                list.push_back(loop);
        });

    std::vector<std::size_t> tints(loops.size(), kTints);
    for (std::size_t loop = 0; loop < loops.size(); ++loop) {
        std::set<std::size_t> taken;
        VisitEdges(loops[loop], [&](Vertex const& from, Vertex const& to) {
            for (std::size_t const other : carriers[EdgeOf(from, to)])
                taken.insert(tints[other]);
        });
        // Starting at another tint each time spreads all of them over the picture.
        std::size_t tint = loop % kTints;
        for (std::size_t step = 0; step < kTints && taken.count(tint) > 0; ++step)
            tint = (tint + 1) % kTints;
        tints[loop] = tint;
    }
    return tints;
}

Sectrix::CSPosition const* Find(CrossSection const& section, int index) {
    bool found = false;
    auto const& position = section.Positions().GetPosition(static_cast<std::uint64_t>(index), found);
    return found ? &position : nullptr;
}

Point PointOf(Sectrix::CSPosition const& position) {
    return {position.Position()[0], position.Position()[1]};
}

void AddEdges(SectionContent& content, CrossSection const& section, std::vector<Loop> const& loops) {
    std::set<std::pair<Edge, bool>> drawn;
    for (Loop const& loop : loops)
        VisitEdges(loop, [&](Vertex const& from, Vertex const& to) {
            auto const* tail = Find(section, from.Index());
            auto const* head = Find(section, to.Index());
            // Once only, since the dashes of one edge drawn from both sides would fill each other's gaps.
            if (tail && head && drawn.insert({EdgeOf(from, to), to.Exterior()}).second)
                (to.Exterior() ? content.m_outline : content.m_cuts).emplace_back(PointOf(*tail), PointOf(*head));
        });
}

void AddNames(SectionContent& content, CrossSection const& section, Loop const& loop) {
    for (auto const& vertex : loop.Vertices())
        if (auto const* position = Find(section, vertex.Index()); position && !position->Name().empty())
            content.m_named.insert({vertex.Index(), Label{position->Name(), PointOf(*position)}});
}

} // namespace

SectionContent::SectionContent(CrossSection const& section, bool withConvexLoops) {
    std::vector<Loop> boundary{section.ExteriorLoop()};
    boundary.insert(boundary.end(), section.InteriorLoops().begin(), section.InteriorLoops().end());
    auto const& loops = withConvexLoops ? section.ConvexLoops() : boundary;
    std::transform(loops.begin(), loops.end(), std::back_inserter(m_loops), CornersOf);
    AddEdges(*this, section, loops);
    if (withConvexLoops) {
        m_tints = ChooseTints(loops);
        for (Loop const& loop : loops)
            m_faults.push_back(!IsConvex(loop));
        for (int const index : section.AddedVertices())
            if (auto const* foot = Find(section, index))
                m_feet.push_back(PointOf(*foot));
    }
    for (Loop const& loop : boundary)
        AddNames(*this, section, loop);
}

std::string LoopStyle() {
    return ".title{font-size:18px;font-weight:bold}"
           ".tint0{fill:#cfe2f6}.tint1{fill:#fbe3c0}.tint2{fill:#d5edcf}.tint3{fill:#e5d9f2}"
           ".tint4{fill:#f9d6d5}.tint5{fill:#cdecec}.tint6{fill:#f3efbd}"
           ".fault{fill:url(#hatch)}"
           ".outline{stroke:#1d3853;stroke-width:1.8;fill:none;stroke-linecap:round}"
           ".cut{stroke:#66727f;stroke-width:1;fill:none;stroke-dasharray:5 3}";
}

std::string LoopDefinitions() {
    return "<defs><pattern id=\"hatch\" width=\"7\" height=\"7\" patternUnits=\"userSpaceOnUse\" "
           "patternTransform=\"rotate(45)\"><line x1=\"0\" y1=\"0\" x2=\"0\" y2=\"7\" stroke=\"#c8102e\" "
           "stroke-width=\"1.8\"/></pattern></defs>";
}

void DrawLoops(Svg& svg, SectionContent const& content, View const& view) {
    std::vector<std::vector<Point>> loops;
    for (auto const& corners : content.m_loops) {
        std::vector<Point>& loop = loops.emplace_back();
        std::transform(corners.begin(), corners.end(), std::back_inserter(loop), view);
    }
    if (content.m_tints.empty())
        svg.Shape(loops, "tint0");
    for (std::size_t loop = 0; loop < content.m_tints.size(); ++loop)
        svg.Polygon(loops[loop], "tint" + std::to_string(content.m_tints[loop]));
    for (std::size_t loop = 0; loop < content.m_faults.size(); ++loop)
        if (content.m_faults[loop])
            svg.Polygon(loops[loop], "fault");
    svg.Raw("<g class=\"drawing\">");
    svg.Segments(ToPicture(content.m_cuts, view), "cut");
    svg.Segments(ToPicture(content.m_outline, view), "outline");
    svg.Raw("</g>");
}

std::vector<Segment> ToPicture(std::vector<Segment> const& segments, View const& view) {
    std::vector<Segment> picture;
    picture.reserve(segments.size());
    for (auto const& [from, to] : segments)
        picture.emplace_back(view(from), view(to));
    return picture;
}

std::vector<Point> CornersOf(Loop const& loop) {
    std::vector<Point> corners;
    for (auto const& point : Points(loop))
        corners.push_back({point[0], point[1]});
    return corners;
}

} // namespace qel::SectrixTools::Pictures
