#pragma once

#include "sectrix/sections/cross_section.h"

#include <cstdint>
#include <vector>

/// \file
/// Internal: numbers made of names, equal wherever loops or sections line up by their names.
///
/// A key only says where to look for a partner: what it leads to is tested before it counts.

namespace qel::Sectrix {

/// True when all these loops are compared by names with any others that are.
bool HaveNames(std::vector<Loop> const& loops);

/// A key that two loops have in common whenever they line up by their names.
std::uint64_t KeyOf(Loop const& loop);

/// The key of a section: of what it must have in common with its partner.
///
/// Every hole of a partner has its own partner in the section, and there are equally many. So a partner has the
/// holes of the section, apart from how often each repeats, or, where its own holes repeat, fewer different ones.
struct SectionKey {
    /// Of the number of named positions, that of interior loops, and the exterior loop. Where convex loops are
    /// compared, of them all in their order.
    std::uint64_t m_outline = 0;
    /// The keys of the interior loops, each once, ascending. Empty where convex loops are compared.
    std::vector<std::uint64_t> m_holes;

    /// Makes the key, building the convex loops when they are what is compared. False when some loop that is
    /// compared is not compared by names: the key then says nothing.
    /// \param count  of the section's named positions.
    bool Set(CrossSection const& section, bool convex, std::uint64_t count);
    /// Of sections that have all this in common.
    std::uint64_t Whole() const;
    /// True when the holes of `other` are some of these, but not all.
    bool HasMoreThan(SectionKey const& other) const;
};

} // namespace qel::Sectrix
