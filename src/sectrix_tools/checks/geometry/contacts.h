#pragma once

#include "sectrix_tools/checks/geometry/boundary.h"

#include <cstddef>
#include <vector>

/// \file
/// Where the loops of a section meet themselves and each other.

namespace qel::SectrixTools::Geometry {

/// What two stretches of boundary do where they meet.
enum class ContactKind {
    /// One goes over to the other side of the other.
    Cross,
    /// They share a point, at a corner of one alone.
    TouchEdge,
    /// They share a point, at a corner of both.
    TouchCorner,
    /// They run along each other in opposite directions, and part on the side where they met.
    RunBack,
    /// They run along each other in one direction, and part on the side where they met, or never.
    RunAlong
};

/// A place where two stretches of boundary meet, which are not one edge and the next.
struct Contact {
    ContactKind m_kind = ContactKind::Cross;
    /// The corner, or the edge by its number, of the one that stands first in the section.
    std::size_t m_first = 0;
    /// The corner or edge of the other.
    std::size_t m_second = 0;
    /// Where; where they begin to run along each other, if they do.
    Point m_point;
};

struct Contacts {
    /// By `m_first`, then by `m_second`.
    std::vector<Contact> m_contacts;
    /// False when there are more places than a search may find, and it ended early.
    bool m_isComplete = true;
};

/// All contacts of a section. With n edges and k contacts this takes time in proportion to n log n + n k.
///
/// \param most  the search ends when it has met about as many.
Contacts FindContacts(Boundary const& boundary, std::size_t most);

} // namespace qel::SectrixTools::Geometry
