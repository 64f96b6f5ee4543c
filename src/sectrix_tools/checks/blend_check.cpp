#include "sectrix_tools/checks/blend_check.h"

#include "sectrix_tools/checks/blending/loop_comparison.h"

#include <algorithm>
#include <iterator>

namespace qel::SectrixTools {

namespace {

using Geometry::CompareLoops;
using Geometry::FindingList;
using Geometry::HaveNames;
using Sectrix::CrossSection;
using Sectrix::CrossSections;
using Sectrix::Loop;

/// The search for partners that do not stand in the same place ends when it may have looked at so many vertices.
constexpr std::size_t kMostVertices = 100000000;

std::size_t VertexCount(CrossSection const& section) {
    auto count = section.ExteriorLoop().Vertices().size();
    for (auto const& hole : section.InteriorLoops())
        count += hole.Vertices().size();
    return count;
}

class BlendCheck {
public:
    BlendCheck(CrossSections const& first, CrossSections const& second)
        : m_first(first), m_second(second), m_areCompatible(first.IsCompatible(second, false)),
          m_partnerOf(second.Items().size(), -1) {
        for (auto const& section : second.Items())
            m_secondSize += VertexCount(section);
    }

    Findings Run() {
        CompareSets();
        auto const& sections = m_first.Items();
        for (std::size_t place = 0; place < sections.size() && !m_isStopped; ++place) {
            FindingList findings(static_cast<int>(place));
            if (auto const* partner = FindPartner(place))
                ComparePartners(sections[place], *partner, place, findings);
            else if (!m_isStopped)
                Explain(sections[place], place, findings);
            Take(findings);
        }
        if (m_isStopped) {
            FindingList findings(-1);
            findings.Add(Severity::Warning, "search-stopped",
                         "so much stands in other places in the two sets that the search for partners was stopped",
                         {});
            Take(findings);
        }
        if (!m_areCompatible && !HasErrors(m_findings)) {
            FindingList findings(-1);
            findings.Add(Severity::Error, "section-without-partner",
                         "the second set has no section that one of the first can be blended into", {});
            Take(findings);
        }
        return std::move(m_findings);
    }

private:
    void Take(FindingList& findings) {
        auto taken = findings.Take();
        m_findings.insert(m_findings.end(), std::make_move_iterator(taken.begin()),
                          std::make_move_iterator(taken.end()));
    }

    void CompareSets() {
        FindingList findings(-1);
        auto const count = m_first.Items().size(), otherCount = m_second.Items().size();
        if (count != otherCount)
            findings.Add(Severity::Error, "section-count-differs",
                         "the first set has " + std::to_string(count) + " sections and the second " +
                             std::to_string(otherCount),
                         {});
        if ((m_first.Positions().NamedCount() > 0) != (m_second.Positions().NamedCount() > 0))
            findings.Add(Severity::Warning, "names-in-one-set",
                         std::string("only the ") + (m_first.Positions().NamedCount() > 0 ? "first" : "second") +
                             " set has names, so that loops are compared by their indices",
                         {});
        for (auto const* const sets : {&m_first, &m_second}) {
            auto const& other = sets == &m_first ? m_second : m_first;
            for (auto const& [name, value] : sets->Parameters())
                if (other.Parameters().count(name) == 0)
                    findings.Add(Severity::Warning, "parameter-missing",
                                 std::string("only the ") + (sets == &m_first ? "first" : "second") +
                                     " set has the parameter '" + name + "', which a blend will not have",
                                 {});
        }
        Take(findings);
    }

    /// False when there has been too much to look at.
    bool Charge(std::size_t vertices) {
        m_charged += vertices;
        m_isStopped = m_isStopped || m_charged > kMostVertices;
        return !m_isStopped;
    }

    CrossSection const* FindPartner(std::size_t place) {
        auto const &section = m_first.Items()[place], *const same = AtPlace(m_second.Items(), place);
        if (same && section.IsCompatible(*same, false))
            return same;
        if (!HaveNames(m_second.Positions(), section.Positions()) || !Charge(m_secondSize))
            return nullptr;
        bool found = false;
        auto const& partner = m_second.GetCompatibleSection(section, place, false, found);
        return found ? &partner : nullptr;
    }

    template <class Item>
    static Item const* AtPlace(std::vector<Item> const& items, std::size_t place) {
        return place < items.size() ? &items[place] : nullptr;
    }

    /// What is hardly meant between sections that can be blended.
    void ComparePartners(CrossSection const& section, CrossSection const& partner, std::size_t place,
                         FindingList& findings) {
        auto& taken = m_partnerOf[static_cast<std::size_t>(&partner - m_second.Items().data())];
        if (taken >= 0)
            findings.Add(Severity::Warning, "partner-shared",
                         "this section is blended into the same section of the second set as section " +
                             std::to_string(taken),
                         {});
        taken = static_cast<int>(place);
        if (!section.AssemblyPartName().empty() && section.AssemblyPartName() != partner.AssemblyPartName())
            findings.Add(Severity::Warning, "part-name-differs",
                         "the section belongs to the assembly part '" + section.AssemblyPartName() +
                             "' in the first set and to '" + partner.AssemblyPartName() +
                             "' in the second; a blend will have no name",
                         {});
        if (HaveNames(section.Positions(), partner.Positions()) && section.GetNamedPositionCount() > 0)
            AddUnnamed(section, findings);
        CompareHoles(section, partner, findings);
    }

    static std::string LoopName(std::size_t number) {
        return number == 0 ? "the outline" : "hole " + std::to_string(number);
    }

    static void AddUnnamed(CrossSection const& section, FindingList& findings) {
        for (std::size_t loop = 0; loop <= section.InteriorLoops().size(); ++loop)
            if ((loop == 0 ? section.ExteriorLoop() : section.InteriorLoops()[loop - 1]).GetNamedPositionCount() ==
                0)
                findings.Add(Severity::Warning, "loop-without-names",
                             LoopName(loop) + " has no named vertex, so that its vertices are paired as they stand",
                             {static_cast<int>(loop), -1});
    }

    /// Every hole of `partner` must have one of `section` that it lines up with.
    void CompareHoles(CrossSection const& section, CrossSection const& partner, FindingList& findings) {
        std::vector<bool> isTaken(section.InteriorLoops().size(), false);
        for (std::size_t place = 0; place < partner.InteriorLoops().size() && !m_isStopped; ++place) {
            auto const* hole = FindHole(section, partner.InteriorLoops()[place], place);
            if (hole)
                isTaken[static_cast<std::size_t>(hole - section.InteriorLoops().data())] = true;
            else if (!m_isStopped)
                ExplainHole(section, partner, place, findings);
        }
        for (std::size_t place = 0; place < isTaken.size() && m_areCompatible && !m_isStopped; ++place)
            if (!isTaken[place])
                findings.Add(Severity::Warning, "partner-shared",
                             LoopName(place + 1) +
                                 " is left out of a blend: two holes of the second set are blended "
                                 "with another one",
                             {static_cast<int>(place) + 1, -1});
    }

    Loop const* FindHole(CrossSection const& section, Loop const& hole, std::size_t place) {
        auto const* const same = AtPlace(section.InteriorLoops(), place);
        if (same && hole.IsCompatible(*same))
            return same;
        if (!HaveNames(section.Positions(), hole.Positions()) || !Charge(VertexCount(section)))
            return nullptr;
        bool found = false;
        auto const& partner = section.GetCompatibleInteriorLoop(hole, place, found);
        return found ? &partner : nullptr;
    }

    void ExplainHole(CrossSection const& section, CrossSection const& other, std::size_t place,
                     FindingList& findings) {
        auto const& hole = other.InteriorLoops()[place];
        if (auto const* const same = AtPlace(section.InteriorLoops(), place))
            CompareLoops(*same, hole, static_cast<int>(place) + 1, LoopName(place + 1), findings);
        else
            findings.Add(Severity::Error, "hole-without-partner",
                         LoopName(place + 1) + " of the second set has no partner in the first", {});
    }

    /// Why a section has no partner, against the section that it was most likely meant for.
    void Explain(CrossSection const& section, std::size_t place, FindingList& findings) {
        auto const& others = m_second.Items();
        auto const named = std::find_if(others.begin(), others.end(), [&section](CrossSection const& other) {
            return !section.AssemblyPartName().empty() && other.AssemblyPartName() == section.AssemblyPartName();
        });
        auto const* const other = named != others.end() ? &*named : AtPlace(others, place);
        if (other)
            CompareSections(section, *other, findings);
        if (!findings.HasErrors())
            findings.Add(Severity::Error, "section-without-partner",
                         "the second set has no section that this one can be blended into", {});
    }

    void CompareSections(CrossSection const& section, CrossSection const& other, FindingList& findings) {
        auto const names = section.GetNamedPositionCount(), otherNames = other.GetNamedPositionCount();
        if (names != otherNames && HaveNames(section.Positions(), other.Positions()))
            findings.Add(Severity::Error, "name-count-differs",
                         "the section has " + std::to_string(names) + " named vertices in the first set and " +
                             std::to_string(otherNames) + " in the second",
                         {});
        if (section.InteriorLoops().size() != other.InteriorLoops().size())
            findings.Add(Severity::Error, "hole-count-differs",
                         "the section has " + std::to_string(section.InteriorLoops().size()) +
                             " holes in the first set and " + std::to_string(other.InteriorLoops().size()) +
                             " in the second",
                         {});
        if (!section.ExteriorLoop().IsCompatible(other.ExteriorLoop()))
            CompareLoops(section.ExteriorLoop(), other.ExteriorLoop(), 0, "the outline", findings);
        CompareHoles(section, other, findings);
    }

    CrossSections const& m_first;
    CrossSections const& m_second;
    bool const m_areCompatible;
    /// The number of vertices of the second set.
    std::size_t m_secondSize = 0;
    /// For each section of the second set the last one of the first that is blended into it; -1 for none.
    std::vector<int> m_partnerOf;
    std::size_t m_charged = 0;
    bool m_isStopped = false;
    Findings m_findings;
};

} // namespace

Findings CheckBlend(Sectrix::CrossSections const& first, Sectrix::CrossSections const& second) {
    return BlendCheck(first, second).Run();
}

} // namespace qel::SectrixTools
