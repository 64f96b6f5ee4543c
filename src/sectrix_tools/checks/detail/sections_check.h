#pragma once

#include "sectrix_tools/checks/detail/document_places.h"
#include "sectrix_tools/checks/detail/document_walk.h"
#include "sectrix_tools/checks/detail/positions_check.h"

#include <vector>

/// \file
/// The check of a document's list of sections. Internal to the checks.

namespace qel::SectrixTools {

/// Reads the list of sections as reading does, each with its loops, beside the pool that these index.
class SectionsCheck {
public:
    /// \param places  where not null: receives the places of what is kept.
    SectionsCheck(DocumentWalk& walk, PositionsCheck& positions, DocumentPlaces* places)
        : m_walk(walk), m_positions(positions), m_pool(positions.Pool()), m_places(places) {}

    /// Checks the list that the walk stands on.
    void Check(Dom const& sections);
    /// Checks the one section through all positions that there is without a list; the walk stands on its parent.
    void CheckWholePool();

private:
    /// A vertex of a loop.
    struct Kept {
        int m_index = 0;
        /// From the list to its element, and the place of that in the list and in the text.
        DocumentWalk::Step m_step;
        int m_element = 0;
        std::size_t m_place = 0;
        /// The finding on it, a place in the list of findings; -1 for none.
        std::ptrdiff_t m_finding = -1;
    };

    void CheckSection(Dom const& section);
    void EndSection(std::size_t firstFinding);
    void CheckLoops(Dom const& loops);
    void CheckPair(Dom const& pair);
    void CheckLoop(Dom const& list, bool exterior);
    void CheckIndex(Dom const& node, std::uint64_t element);
    void ReportIndex(Dom const& node, int index);
    void CheckRepeats(std::string const& list, bool exterior);
    void AddLoopPlaces(LoopPlaces places, bool exterior);
    void Drop(char const* code, std::string message);
    /// The same where indices that may stand there are not seen.
    void DropUnread(char const* code, std::string message);

    DocumentWalk& m_walk;
    PositionsCheck& m_positions;
    std::vector<PositionsCheck::Kept>& m_pool;
    DocumentPlaces* m_places;

    /// How many sections are kept so far, and how many loops there were.
    int m_sectionCount = 0;
    int m_loopCount = 0;
    /// True when something stands where a loop or a section should: what is used then cannot be told.
    bool m_isLoopUnread = false;
    // Of the section that is being read.
    bool m_isDropped = false;
    int m_exteriorCount = 0;
    int m_interiorCount = 0;
    SectionPlaces m_section;
    /// Of the loop that is being read, in the order of the document.
    std::vector<Kept> m_vertices;
};

} // namespace qel::SectrixTools
