#pragma once

#include <algorithm>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <vector>

/// \file
/// The parts of the module, a source file each, and what they share: lists as arrays.

namespace qel::SectrixTools {
struct Finding;
}

namespace sectrix_python {

namespace py = pybind11;

/// Sets of sections.
void BindSections(py::module_& module);
/// Checks of documents and sets.
void BindChecks(py::module_& module);
/// Solids and where their sections stand.
void BindSolids(py::module_& module);
/// Meshes, extrusions and the model database.
void BindModel(py::module_& module);

/// Findings as tuples, in the order of the fields.
py::list FindingTuples(std::vector<qel::SectrixTools::Finding> const& findings);

/// An array of its own with these numbers.
template <class Number, class Container>
py::array_t<Number> List(Container const& numbers) {
    py::array_t<Number> array(static_cast<py::ssize_t>(numbers.size()));
    std::copy(numbers.begin(), numbers.end(), array.mutable_data());
    return array;
}

/// An array of its own with these numbers, in rows of so many.
template <class Number, class Container>
py::array_t<Number> Rows(Container const& numbers, py::ssize_t columns) {
    return List<Number>(numbers).reshape({static_cast<py::ssize_t>(numbers.size()) / columns, columns});
}

} // namespace sectrix_python
