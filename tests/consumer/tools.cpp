// A host that takes the tools too.
#include "sectrix_tools/checks/finding.h"

#include <iostream>

int main() {
    qel::SectrixTools::Findings findings(1);
    std::cout << qel::SectrixTools::SeverityName(findings[0].m_severity) << ' '
              << qel::SectrixTools::HasErrors(findings) << '\n';
}
