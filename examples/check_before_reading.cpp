/// \file
/// Says what is wrong with a document of sections, and reads it only where nothing of it would be lost.

#include "sectrix/sections/cross_sections.h"
#include "sectrix_tools/checks/document_check.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

using namespace qel;

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: check_before_reading DOCUMENT\n";
        return 2;
    }
    std::ifstream file(argv[1], std::ios::binary);
    std::string const text(std::istreambuf_iterator<char>(file), {});
    auto const findings = SectrixTools::CheckDocument(text);
    for (auto const& finding : findings)
        std::cout << "line " << finding.m_line << ", column " << finding.m_column << ": "
                  << SectrixTools::SeverityName(finding.m_severity) << ": " << finding.m_message << '\n';
    if (SectrixTools::HasErrors(findings))
        return 1;

    std::istringstream document(text);
    Sectrix::CrossSections set;
    set.From(document);
    std::cout << set.Items().size() << " sections over " << set.Positions().Count() << " positions\n";
    return 0;
}
