#include "sectrix_tools/solids/sweeping/soundness.h"

#include "sectrix_tools/checks/geometry_check.h"

#include <algorithm>

namespace qel::SectrixTools::Solids {

Findings SoundnessErrors(Sectrix::CrossSection const& section, bool isCut) {
    Findings findings = CheckGeometry(section);
    auto const isOfNoInterest = [isCut](Finding const& finding) {
        bool const isOfCut = finding.m_code == "convex-loop-not-convex" || finding.m_code == "areas-differ";
        return finding.m_severity != Severity::Error || (isOfCut && !isCut);
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), isOfNoInterest), findings.end());
    return findings;
}

} // namespace qel::SectrixTools::Solids
