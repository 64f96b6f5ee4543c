#include "sectrix_tools/checks/finding.h"

#include <algorithm>

namespace qel::SectrixTools {

char const* SeverityName(Severity severity) noexcept {
    return severity == Severity::Error ? "error" : "warning";
}

bool HasErrors(Findings const& findings) noexcept {
    return std::any_of(findings.begin(), findings.end(),
                       [](Finding const& finding) { return finding.m_severity == Severity::Error; });
}

} // namespace qel::SectrixTools
