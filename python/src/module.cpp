#include "section_set.h"

#include "sectrix/interfaces/dom_writer_json.h"
#include "sectrix_tools/drawings/section_drawing.h"

#include <cstdint>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <tuple>
#include <utility>
#include <vector>

// The half of the Python package that is made of C++: sets, answers as arrays and tuples, and no more. What users
// see of it is dressed in Python, in the modules beside. Whatever takes long runs without the interpreter's lock.

namespace py = pybind11;

namespace sectrix_python {

namespace {

using namespace qel;
using namespace qel::Sectrix;
using namespace qel::SectrixTools;

using Unlocked = py::call_guard<py::gil_scoped_release>;

/// x and y of points, one behind the other.
using Coordinates = std::vector<double>;

/// An array of its own with these numbers, in rows of so many.
py::array_t<double> Rows(std::vector<double> const& numbers, py::ssize_t columns) {
    auto const rows = static_cast<py::ssize_t>(numbers.size()) / columns;
    py::array_t<double> array({rows, columns});
    std::copy(numbers.begin(), numbers.end(), array.mutable_data());
    return array;
}

template <class Number, class Container>
py::array_t<Number> List(Container const& numbers) {
    py::array_t<Number> array(static_cast<py::ssize_t>(numbers.size()));
    std::copy(numbers.begin(), numbers.end(), array.mutable_data());
    return array;
}

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
    return py::make_tuple(Rows(data.m_points, 2), List<std::int64_t>(data.m_indices), List<bool>(data.m_flags),
                          data.m_names);
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
    return Rows(Ask(set,
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

std::string ToSvg(SectionSet& set, std::size_t place, SectionDrawingOptions const& options) {
    return Ask(
        set, [&](CrossSections const& sections) { return DrawSection(sections.Items().at(place), options).m_svg; });
}

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
        .def("cut", &Cut)
        .def("blend", &Blend, Unlocked())
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

} // namespace

} // namespace sectrix_python

PYBIND11_MODULE(_core, module) {
    sectrix_python::BindSections(module);
}
