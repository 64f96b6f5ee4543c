#pragma once

#include "sectrix_tools/checks/detail/document_walk.h"

#include <string>
#include <unordered_map>
#include <vector>

/// \file
/// The check of a document's list of positions. Internal to the checks.

namespace qel::SectrixTools {

/// Reads the list of positions as reading does, and knows its pool then.
class PositionsCheck {
public:
    /// A position of the pool.
    struct Kept {
        /// From the list to its element.
        DocumentWalk::Step m_step;
        /// The place of the element in its list.
        int m_element = 0;
        /// The place of the element in the text.
        std::size_t m_place = 0;
        /// The number of the last loop that has used it, counted from 1; 0 where none has.
        int m_lastLoop = 0;
    };

    explicit PositionsCheck(DocumentWalk& walk) : m_walk(walk) {}

    /// Checks the list that the walk stands on.
    void Check(Dom const& positions);
    /// Reports each position that no loop has used.
    void ReportUnused();

    /// The positions that reading keeps, by their index.
    std::vector<Kept>& Pool() { return m_pool; }
    /// The JSON Pointer of the list.
    std::string const& Pointer() const { return m_pointer; }
    /// The place of the list in the text.
    std::size_t Place() const { return m_place; }

private:
    void CheckObject(Dom const& position);
    void CheckCoordinates(Dom const& coordinates);
    void CheckName(Dom const& name);

    DocumentWalk& m_walk;
    std::vector<Kept> m_pool;
    std::string m_pointer;
    std::size_t m_place = 0;
    /// The names so far.
    std::unordered_map<std::string, int> m_names;
};

} // namespace qel::SectrixTools
