#pragma once

#include "sectrix/interfaces/dom_reader_json.h"

#include <fstream>
#include <stdexcept>
#include <string>

/// \file
/// The reading of the files in data. What is not there, or is not what it must be, fails the run.

namespace sectrix_tests {

inline std::string FileText(std::string const& path) {
    std::ifstream file(std::string(SECTRIX_TEST_DATA) + "/" + path, std::ios::binary);
    if (!file)
        throw std::runtime_error(path + " is not there");
    return {std::istreambuf_iterator<char>(file), {}};
}

inline qel::Dom FileDom(std::string const& path) {
    qel::Dom dom;
    std::string error;
    if (!qel::DomReaderJson::FromString(dom, FileText(path).c_str(), &error))
        throw std::runtime_error(path + ": " + error);
    return dom;
}

/// The document of the case of this name in a file of cases.
inline qel::Dom CaseDocument(std::string const& path, std::string const& name) {
    auto const cases = FileDom(path);
    for (std::uint64_t i = 0; i < cases.size(); ++i)
        if (cases[i]["case"].asString({}) == name)
            return cases[i]["document"];
    throw std::runtime_error(path + ": no case is called " + name);
}

} // namespace sectrix_tests
