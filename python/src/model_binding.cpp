#include "bindings.h"

#include "sectrix/extrusion/extrusion.h"
#include "sectrix/interfaces/dom.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/interfaces/gvs.h"
#include "sectrix/mesh/mesh.h"
#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/obj.h"

#include <array>
#include <assimp/mesh.h>
#include <cstdint>
#include <string>
#include <vector>

namespace sectrix_python {

namespace {

using namespace qel;
using namespace qel::Sectrix;

using Floats = py::array_t<float, py::array::c_style | py::array::forcecast>;
using Corners = py::array_t<unsigned, py::array::c_style | py::array::forcecast>;
using Unlocked = py::call_guard<py::gil_scoped_release>;

py::array_t<double> PositionRows(std::vector<Position> const& positions) {
    std::vector<double> numbers;
    for (auto const& position : positions)
        numbers.insert(numbers.end(), {position.X(), position.Y(), position.Z()});
    return Rows<double>(numbers, 3);
}

py::tuple PositionTuple(Position const& position) {
    return py::make_tuple(position.X(), position.Y(), position.Z());
}

/// What `fromOBJ` takes. It owns the arrays that it points to.
std::unique_ptr<aiMesh> ImportedMesh(Floats const& points, Corners const& corners) {
    auto mesh = std::make_unique<aiMesh>();
    mesh->mNumVertices = static_cast<unsigned>(points.shape(0));
    mesh->mVertices = new aiVector3D[mesh->mNumVertices];
    for (unsigned i = 0; i < mesh->mNumVertices; ++i)
        mesh->mVertices[i] = {points.at(i, 0), points.at(i, 1), points.at(i, 2)};
    mesh->mNumFaces = static_cast<unsigned>(corners.shape(0));
    mesh->mFaces = new aiFace[mesh->mNumFaces];
    for (unsigned i = 0; i < mesh->mNumFaces; ++i) {
        mesh->mFaces[i].mNumIndices = 3;
        mesh->mFaces[i].mIndices = new unsigned[3]{corners.at(i, 0), corners.at(i, 1), corners.at(i, 2)};
    }
    return mesh;
}

/// \param points, corners  n by 3; the corners are places in the points.
Mesh MeshOf(Floats const& points, Corners const& corners, std::array<double, 16> const& transform,
            std::wstring const& key, std::wstring const& name) {
    auto const imported = ImportedMesh(points, corners);
    py::gil_scoped_release const unlocked;
    Mesh mesh(key.c_str(), name.c_str());
    mesh.fromOBJ(imported.get(), Matrix{transform.data()});
    return mesh;
}

void BindMesh(py::module_& module) {
    py::class_<Mesh>(module, "Mesh")
        .def(py::init(&MeshOf))
        .def("positions", [](Mesh const& mesh) { return PositionRows(mesh.Positions()); })
        .def("indices", [](Mesh const& mesh) { return List<std::int64_t>(mesh.Indices()); })
        .def("transform", [](Mesh const& mesh) { return Rows<double>(mesh.Transform().m_elements, 4); })
        .def("key", [](Mesh const& mesh) { return mesh.Key(); })
        .def("name", [](Mesh const& mesh) { return mesh.Name(); })
        .def(
            "merged", [](Mesh const& mesh) { return Mesh(mesh, true); }, Unlocked())
        .def("bounding_box", [](Mesh const& mesh) -> py::object {
            Position min, max;
            if (!mesh.BoundingBox(min, max))
                return py::none();
            return py::make_tuple(PositionTuple(min), PositionTuple(max));
        });
}

/// The document; null where the text is no JSON.
bool Parse(py::bytes const& text, Dom& document) {
    std::string const copy = text;
    py::gil_scoped_release const unlocked;
    return DomReaderJson::FromString(document, copy.c_str(), nullptr);
}

/// The name, and for each section whether it is an outline, and its profiles; None where the text is no JSON.
py::object ReadExtrusion(py::bytes const& text) {
    Dom document;
    if (!Parse(text, document))
        return py::none();
    Extrusion extrusion;
    extrusion.from(document);
    py::list sections;
    for (auto const& section : extrusion.Sections()) {
        py::list profiles;
        for (auto const& profile : section.Profiles())
            profiles.append(PositionRows(profile.Positions()));
        sections.append(py::make_tuple(section.Exterior(), profiles));
    }
    return py::make_tuple(extrusion.AssemblyPartName(), sections);
}

/// Whether it is the start, origin, normal, skew; None where the text is no JSON.
py::object ReadEndPlane(py::bytes const& text) {
    Dom document;
    if (!Parse(text, document))
        return py::none();
    EndPlane plane;
    plane.from(document);
    return py::make_tuple(plane.IsStart(), PositionTuple(plane.Origin()), PositionTuple(plane.Normal()),
                          plane.Skew());
}

/// The bytes that a record pulls out of a file, with no lock of the interpreter held meanwhile.
template <class Record>
py::bytes Pull(std::string const& path, Record const& record) {
    std::string data;
    {
        py::gil_scoped_release const unlocked;
        gvs::Database database(path);
        record.PullDataFromSourceRecord(&database, data);
    }
    return py::bytes(data);
}

} // namespace

void BindModel(py::module_& module) {
    BindMesh(module);
    module.def("read_extrusion", &ReadExtrusion);
    module.def("read_end_plane", &ReadEndPlane);
    py::register_exception<gvs::Error>(module, "DatabaseError", PyExc_RuntimeError);
    module.def("pull_acis", [](py::bytes const& path, std::wstring const& guid, std::wstring const& parentClass,
                               std::wstring const& parentGuid, int index) {
        return Pull(path, AcisGeometry({}, parentClass, parentGuid, guid, {}, index, {}));
    });
    module.def("pull_mesh", [](py::bytes const& path, std::int64_t id, std::wstring const& guid) {
        return Pull(path, Obj(id, {}, {}, {}, {}, guid, {}));
    });
}

} // namespace sectrix_python
