#include "bindings.h"

#include "sectrix_tools/checks/extrusion_check.h"
#include "sectrix_tools/checks/text_check.h"

#include <string>

namespace sectrix_python {

namespace {

using namespace qel;
using namespace qel::SectrixTools;

/// A text that may quote bytes of a document that are no UTF-8.
py::str Text(std::string const& bytes) {
    auto* const text = PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "replace");
    if (text == nullptr)
        throw py::error_already_set();
    return py::reinterpret_steal<py::str>(text);
}

/// A place that counts from 0; None for one that is not meant.
py::object Place(int place) {
    return place < 0 ? py::object(py::none()) : py::int_(place);
}

py::tuple FindingTuple(Finding const& finding) {
    py::object point = py::none();
    if (finding.m_point)
        point = py::make_tuple((*finding.m_point)[0], (*finding.m_point)[1]);
    return py::make_tuple(SeverityName(finding.m_severity), finding.m_code, Text(finding.m_message),
                          Text(finding.m_pointer), finding.m_line, finding.m_column, Place(finding.m_section),
                          Place(finding.m_loop), Place(finding.m_vertex), point);
}

/// The findings of `check`, which runs without the interpreter's lock.
template <class Check>
py::list FindingsIn(py::bytes const& text, Check const& check) {
    std::string const copy = text;
    Findings findings;
    {
        py::gil_scoped_release const unlocked;
        findings = check(copy);
    }
    return FindingTuples(findings);
}

} // namespace

py::list FindingTuples(Findings const& findings) {
    py::list list;
    for (auto const& finding : findings)
        list.append(FindingTuple(finding));
    return list;
}

void BindChecks(py::module_& module) {
    module.def("check_sections", [](py::bytes const& text, double scale) {
        return FindingsIn(text, [scale](std::string const& copy) { return CheckText(copy, scale); });
    });
    module.def("check_extrusion", [](py::bytes const& text) {
        return FindingsIn(text, [](std::string const& copy) { return CheckExtrusion(copy); });
    });
}

} // namespace sectrix_python
