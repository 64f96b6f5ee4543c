#include "progress.h"

#include "streams.h"

#include <cstdio>
#include <utility>

namespace qel::SectrixCommand {

Progress::Progress(std::string work, std::size_t total)
    : m_work(std::move(work)), m_total(total), m_isTerminal(IsTerminal(stderr)),
      m_next(Clock::now() + std::chrono::seconds(1)) {}

void Progress::Step() noexcept {
    ++m_done;
    if (!m_isTerminal || Clock::now() < m_next)
        return;
    std::fprintf(stderr, "\r%s %zu of %zu", m_work.c_str(), m_done, m_total);
    m_isShown = true;
    m_next = Clock::now() + std::chrono::milliseconds(100);
}

void Progress::Hide() noexcept {
    if (m_isShown)
        std::fputs("\r\033[K", stderr);
    m_isShown = false;
}

} // namespace qel::SectrixCommand
