// A host that takes the tools too.
#include "sectrix_tools/checks/text_check.h"

#include <iostream>

int main() {
    char const* const text = R"({ "Outlines": [[[0, 0], [3, 0], [3, 2], [0, 2]], [[[[0, 1, 3, 2, 4], true]]]] })";
    for (auto const& finding : qel::SectrixTools::CheckText(text, 1.0))
        std::cout << finding.m_line << ':' << finding.m_column << ' ' << finding.m_code << '\n';
}
