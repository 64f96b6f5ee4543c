#pragma once

#include <chrono>
#include <cstddef>
#include <string>

/// \file
/// How far long work has come, for a person who waits.

namespace qel::SectrixCommand {

/// A line on standard error, only where that is a terminal and only once the work has taken a second. It stands
/// until the next output, which hides it, or the end of the object.
class Progress {
public:
    /// \param work  what is done, such as "checked".
    /// \param total how many steps there are.
    Progress(std::string work, std::size_t total);
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress() { Hide(); }

    /// One more step is done.
    void Step() noexcept;
    /// Takes the line off the terminal, so that other output can be written.
    void Hide() noexcept;

private:
    using Clock = std::chrono::steady_clock;

    std::string m_work;
    std::size_t m_total;
    std::size_t m_done = 0;
    bool m_isTerminal;
    bool m_isShown = false;
    /// The line is not written before this.
    Clock::time_point m_next;
};

} // namespace qel::SectrixCommand
