#include "bindings.h"
#include "section_set.h"

#include "sectrix_tools/solids/placement.h"
#include "sectrix_tools/solids/sweep.h"
#include "sectrix_tools/solids/triangle_mesh.h"

#include <array>
#include <cstdint>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

namespace sectrix_python {

namespace {

using namespace qel;
using namespace qel::SectrixTools;

using Triple = std::array<double, 3>;
using Placed = std::tuple<std::shared_ptr<SectionSet>, std::size_t, std::array<double, 16>>;

Vec<3, double> Point(Triple const& numbers) {
    return {numbers[0], numbers[1], numbers[2]};
}

/// Matrices one behind the other, n by 4 by 4.
py::array_t<double> Matrices(std::vector<Mat<4, double>> const& matrices) {
    py::array_t<double> array({static_cast<py::ssize_t>(matrices.size()), py::ssize_t{4}, py::ssize_t{4}});
    auto* place = array.mutable_data();
    for (auto const& matrix : matrices)
        place = std::copy(matrix.m_elements.begin(), matrix.m_elements.end(), place);
    return array;
}

std::vector<Station> Stations(std::vector<Placed> const& placed) {
    std::vector<Station> stations;
    for (auto const& [set, place, elements] : placed) {
        Mat<4, double> placement;
        placement.m_elements = elements;
        stations.push_back({&set->Locked().Items().at(place), placement});
    }
    return stations;
}

/// A solid and what is measured on it.
struct Measured {
    Solid m_solid;
    double m_volume = 0.0;
    double m_area = 0.0;
    bool m_isClosed = false;
};

Measured SweepLocked(std::vector<Placed> const& placed) {
    std::vector<SectionSet*> sets;
    for (auto const& station : placed)
        sets.push_back(std::get<0>(station).get());
    auto const locks = SectionSet::LockAll(std::move(sets));
    Measured measured{Sweep(Stations(placed))};
    auto const& mesh = measured.m_solid.m_mesh;
    measured.m_volume = Volume(mesh);
    measured.m_area = SurfaceArea(mesh);
    measured.m_isClosed = IsClosed(mesh);
    return measured;
}

/// Points, triangles, volume, area, closed; and the findings that say why there is none.
py::tuple SweepTuple(std::vector<Placed> const& placed) {
    Measured measured;
    {
        py::gil_scoped_release const unlocked;
        measured = SweepLocked(placed);
    }
    auto const& mesh = measured.m_solid.m_mesh;
    py::array_t<double> points({static_cast<py::ssize_t>(mesh.m_points.size()), py::ssize_t{3}});
    auto* place = points.mutable_data();
    for (auto const& point : mesh.m_points)
        place = std::copy(std::begin(point.m_elements), std::end(point.m_elements), place);
    return py::make_tuple(points, Rows<std::uint32_t>(mesh.m_triangles, 3), measured.m_volume, measured.m_area,
                          measured.m_isClosed, FindingTuples(measured.m_solid.m_findings));
}

} // namespace

void BindSolids(py::module_& module) {
    module.def("sweep", &SweepTuple);
    module.def("placement", [](Triple const& origin, Triple const& direction, Triple const& up, double twist) {
        return Matrices({Placement(Point(origin), Point(direction), Point(up), twist)});
    });
    module.def("placements_along_line",
               [](Triple const& from, Triple const& to, std::size_t count, Triple const& up) {
                   return Matrices(PlacementsAlongLine(Point(from), Point(to), count, Point(up)));
               });
    module.def("placements_along_curve",
               [](std::vector<Triple> const& points, Triple const& up, std::vector<double> const& twists) {
                   std::vector<Vec<3, double>> curve;
                   for (auto const& point : points)
                       curve.push_back(Point(point));
                   return Matrices(PlacementsAlongCurve(curve, Point(up), twists));
               });
}

} // namespace sectrix_python
