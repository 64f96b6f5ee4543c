#include "bindings.h"

// The half of the Python package that is made of C++: sets, answers as arrays and tuples, and no more. What users
// see of it is dressed in Python, in the modules beside. Whatever takes long runs without the interpreter's lock.

PYBIND11_MODULE(_core, module) {
    sectrix_python::BindSections(module);
    sectrix_python::BindChecks(module);
    sectrix_python::BindSolids(module);
    sectrix_python::BindModel(module);
}
