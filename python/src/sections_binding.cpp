#include "bindings.h"
#include "section_set.h"

#include "sectrix/interfaces/dom_writer_json.h"
#include "sectrix_tools/checks/blend_check.h"
#include "sectrix_tools/drawings/section_drawing.h"
#include "sectrix_tools/measures/section_properties.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace sectrix_python {

namespace {

using namespace qel;
using namespace qel::Sectrix;
using namespace qel::SectrixTools;

using Unlocked = py::call_guard<py::gil_scoped_release>;

/// x and y of points, one behind the other.
using Coordinates = std::vector<double>;

/// What `use` makes of the set, without the interpreter's lock: another thread may be at work on the set for long.
template <class Use>
auto Ask(SectionSet& set, Use const& use) {
    py::gil_scoped_release const unlocked;
    return set.With(use);
}

/// A loop as Python takes it: the points of its vertices, their pool indices, and their flags.
struct LoopData {
    Coordinates m_points;
    std::vector<std::int64_t> m_indices;
    std::vector<bool> m_flags;
    std::vector<std::string> m_names;
};

LoopData DataOf(Loop const& loop) {
    LoopData data;
    for (auto const& vertex : loop.Vertices()) {
        bool found = false;
        auto const& position = loop.Positions().GetPosition(static_cast<std::uint64_t>(vertex.Index()), found);
        data.m_points.insert(data.m_points.end(), {position.Position()[0], position.Position()[1]});
        data.m_indices.push_back(vertex.Index());
        data.m_flags.push_back(vertex.Exterior());
        data.m_names.push_back(position.Name());
    }
    return data;
}

py::tuple LoopTuple(LoopData const& data) {
    return py::make_tuple(Rows<double>(data.m_points, 2), List<std::int64_t>(data.m_indices),
                          List<bool>(data.m_flags), data.m_names);
}

/// What `read` makes of a section, as a list of tuples, one a loop.
template <class Read>
py::list Loops(SectionSet& set, std::size_t place, Read const& read) {
    std::vector<LoopData> loops;
    Ask(set, [&](CrossSections const& sections) { read(sections.Items().at(place), loops); });
    py::list list;
    for (auto const& loop : loops)
        list.append(LoopTuple(loop));
    return list;
}

/// The exterior loop, and the interior ones behind it.
py::list BoundaryLoops(SectionSet& set, std::size_t place) {
    return Loops(set, place, [](CrossSection const& section, std::vector<LoopData>& loops) {
        loops.push_back(DataOf(section.ExteriorLoop()));
        for (auto const& loop : section.InteriorLoops())
            loops.push_back(DataOf(loop));
    });
}

py::list ConvexLoops(SectionSet& set, std::size_t place) {
    return Loops(set, place, [](CrossSection const& section, std::vector<LoopData>& loops) {
        for (auto const& loop : section.ConvexLoops())
            loops.push_back(DataOf(loop));
    });
}

py::array_t<double> Positions(SectionSet& set) {
    return Rows<double>(Ask(set,
                            [](CrossSections const& sections) {
                                Coordinates points;
                                bool found = false;
                                for (int index = 0; index < sections.Positions().Count(); ++index) {
                                    auto const& position =
                                        sections.Positions().GetPosition(static_cast<std::uint64_t>(index), found);
                                    points.insert(points.end(), {position.Position()[0], position.Position()[1]});
                                }
                                return points;
                            }),
                        2);
}

std::vector<std::string> PositionNames(SectionSet& set) {
    return Ask(set, [](CrossSections const& sections) {
        std::vector<std::string> names;
        bool found = false;
        for (int index = 0; index < sections.Positions().Count(); ++index)
            names.push_back(sections.Positions().GetPosition(static_cast<std::uint64_t>(index), found).Name());
        return names;
    });
}

std::vector<std::string> SectionNames(SectionSet& set) {
    return Ask(set, [](CrossSections const& sections) {
        std::vector<std::string> names;
        for (auto const& section : sections.Items())
            names.push_back(section.AssemblyPartName());
        return names;
    });
}

/// Cuts every section that is not cut yet, and returns how many convex loops there are.
std::size_t Cut(SectionSet& set) {
    return Ask(set, [](CrossSections const& sections) {
        std::size_t count = 0;
        for (auto const& section : sections.Items())
            count += section.ConvexLoops().size();
        return count;
    });
}

py::array_t<std::int64_t> AddedVertices(SectionSet& set, std::size_t place) {
    return List<std::int64_t>(
        Ask(set, [&](CrossSections const& sections) { return sections.Items().at(place).AddedVertices(); }));
}

/// The set on the way from one to another; null where they are not compatible.
std::shared_ptr<SectionSet> Blend(SectionSet& first, SectionSet& second, double ratio) {
    return SectionSet::WithBoth(
        first, second, [ratio](CrossSections const& from, CrossSections const& to) -> std::shared_ptr<SectionSet> {
            if (!from.IsCompatible(to, false))
                return nullptr;
            return std::make_shared<SectionSet>(CrossSections(from, to, ratio, false));
        });
}

/// Why there is none.
py::list BlendFindings(SectionSet& first, SectionSet& second) {
    Findings findings;
    {
        py::gil_scoped_release const unlocked;
        findings = SectionSet::WithBoth(first, second, &CheckBlend);
    }
    return FindingTuples(findings);
}

std::string ToSvg(SectionSet& set, std::size_t place, SectionDrawingOptions const& options) {
    return Ask(
        set, [&](CrossSections const& sections) { return DrawSection(sections.Items().at(place), options).m_svg; });
}

/// The properties by the names that they have in Python.
py::dict PropertyDict(SectionProperties const& of) {
    py::dict dict;
    dict["area"] = of.m_area;
    dict["outer_perimeter"] = of.m_outerPerimeter;
    dict["inner_perimeter"] = of.m_innerPerimeter;
    dict["first_moment_x"] = of.m_firstMomentX;
    dict["first_moment_y"] = of.m_firstMomentY;
    dict["centroid"] = py::make_tuple(of.m_centroid[0], of.m_centroid[1]);
    dict["ix"] = of.m_ix;
    dict["iy"] = of.m_iy;
    dict["ixy"] = of.m_ixy;
    dict["i1"] = of.m_i1;
    dict["i2"] = of.m_i2;
    dict["angle"] = of.m_angle;
    dict["top"] = of.m_top;
    dict["bottom"] = of.m_bottom;
    dict["left"] = of.m_left;
    dict["right"] = of.m_right;
    dict["section_modulus_top"] = of.m_sectionModulusTop;
    dict["section_modulus_bottom"] = of.m_sectionModulusBottom;
    dict["section_modulus_left"] = of.m_sectionModulusLeft;
    dict["section_modulus_right"] = of.m_sectionModulusRight;
    dict["radius_x"] = of.m_radiusX;
    dict["radius_y"] = of.m_radiusY;
    return dict;
}

py::dict Properties(SectionSet& set, std::size_t place) {
    return PropertyDict(
        Ask(set, [&](CrossSections const& sections) { return PropertiesOf(sections.Items().at(place)); }));
}

} // namespace

void BindSections(py::module_& module) {
    py::class_<SectionSet, std::shared_ptr<SectionSet>>(module, "SectionSet")
        .def_static("from_text",
                    [](py::bytes const& text, double scale) {
                        std::string const copy = text;
                        py::gil_scoped_release const unlocked;
                        return std::shared_ptr<SectionSet>(SectionSet::FromText(copy, scale));
                    })
        .def("section_names", &SectionNames)
        .def("positions", &Positions)
        .def("position_names", &PositionNames)
        .def("parameters",
             [](SectionSet& set) {
                 return Ask(set, [](CrossSections const& sections) { return sections.Parameters(); });
             })
        .def("boundary_loops", &BoundaryLoops)
        .def("convex_loops", &ConvexLoops)
        .def("added_vertices", &AddedVertices)
        .def("properties", &Properties)
        .def("cut", &Cut)
        .def("blend", &Blend, Unlocked())
        .def("blend_findings", &BlendFindings)
        .def("normalize_vertical", &SectionSet::NormalizeVertical, Unlocked())
        .def("transform",
             [](SectionSet& set, std::array<double, 9> const& elements) {
                 py::gil_scoped_release const unlocked;
                 Mat<3, double> matrix;
                 matrix.m_elements = elements;
                 set.Transform(matrix);
             })
        .def("text",
             [](SectionSet& set) {
                 std::string text;
                 {
                     py::gil_scoped_release const unlocked;
                     text = DomWriterJson::ToString(set.Document());
                 }
                 return py::bytes(text);
             })
        .def("svg", [](SectionSet& set, std::size_t place, std::string const& title, std::string const& subtitle,
                       std::string const& unit, double width, bool convexLoops, bool feet, bool names,
                       bool dimensions, bool legend) {
            return ToSvg(set, place, {title, subtitle, unit, width, convexLoops, feet, names, dimensions, legend});
        });
}

} // namespace sectrix_python
