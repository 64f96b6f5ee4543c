#include "sectrix_tools/checks/geometry_check.h"

#include "sectrix_tools/checks/geometry/section_check.h"

#include <optional>

namespace qel::SectrixTools {

Findings CheckGeometry(Sectrix::CrossSections const& set) {
    Findings findings;
    std::optional<Geometry::TrialCut> trial;
    Sectrix::CSPositions const* pool = nullptr;
    for (auto const& section : set.Items()) {
        // As a rule all sections of a set are over one pool, which is then copied once.
        if (pool != &section.Positions()) {
            pool = &section.Positions();
            trial.emplace(*pool);
        }
        auto found = Geometry::CheckSection(section, static_cast<int>(&section - set.Items().data()), *trial);
        findings.insert(findings.end(), std::make_move_iterator(found.begin()),
                        std::make_move_iterator(found.end()));
    }
    return findings;
}

Findings CheckGeometry(Sectrix::CrossSection const& section) {
    Geometry::TrialCut trial(section.Positions());
    return Geometry::CheckSection(section, 0, trial);
}

} // namespace qel::SectrixTools
