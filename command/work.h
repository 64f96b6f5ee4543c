#pragma once

#include "table.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// \file
/// Work on many things at once, whose results come in order.

namespace qel::SectrixCommand {

/// What came of one thing that was worked on.
struct Outcome {
    /// For the table.
    std::vector<Row> m_rows;
    /// Files to be written: name and content.
    std::vector<std::pair<std::string, std::string>> m_files;
    /// What the user is told on standard error, a line each.
    std::vector<std::string> m_troubles;
    /// The exit status that it asks for.
    int m_status = 0;

    /// Tells of trouble, and asks for at least this status.
    void Add(std::string trouble, int status);
};

/// Calls `work` with 0 to `count` - 1, on so many threads at once, and hands what comes of it to `take` in this
/// order, on the thread of the caller.
///
/// \throws what either of them throws, the first in order; no more work is begun then.
///
/// \param jobs  at least 1.
void WorkInOrder(std::size_t count, std::size_t jobs, std::function<Outcome(std::size_t)> const& work,
                 std::function<void(Outcome&)> const& take);

} // namespace qel::SectrixCommand
