#include "excerpt.h"

#include "printable.h"

#include <algorithm>

namespace qel::SectrixCommand {
namespace {

/// How many columns of a line are shown, and how many of them are before the place where both sides are long.
constexpr int kColumns = 72;
constexpr int kColumnsBefore = 40;
/// How many bytes are looked at on either side, so that a line of megabytes costs no more than a short one: more
/// than the columns can take, save where combining characters stand in heaps.
constexpr std::size_t kBytes = 1024;
constexpr char const* kDots = "...";

bool IsInsideCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The part of a line around a place that is looked at, cut between characters.
std::string_view Surroundings(std::string_view line, std::size_t place, std::size_t& begin) {
    begin = place > kBytes ? place - kBytes : 0;
    while (begin > 0 && begin < place && IsInsideCharacter(line[begin]))
        ++begin;
    return line.substr(begin, place - begin + kBytes);
}

} // namespace

std::string_view TextLines::At(int line) {
    if (m_starts.empty()) {
        m_starts.push_back(0);
        for (std::size_t end = m_text.find('\n'); end != std::string_view::npos; end = m_text.find('\n', end + 1))
            m_starts.push_back(end + 1);
    }
    auto const place = static_cast<std::size_t>(line - 1);
    if (line < 1 || place >= m_starts.size())
        return {};
    std::size_t const end = place + 1 < m_starts.size() ? m_starts[place + 1] - 1 : m_text.size();
    std::string_view const found = m_text.substr(m_starts[place], end - m_starts[place]);
    return !found.empty() && found.back() == '\r' ? found.substr(0, found.size() - 1) : found;
}

std::string Excerpt(std::string_view lineText, int line, int column) {
    std::size_t const place = std::min(static_cast<std::size_t>(std::max(column, 1) - 1), lineText.size());
    std::size_t begin = 0;
    std::string_view const part = Surroundings(lineText, place, begin);
    std::vector<Glyph> const glyphs = Glyphs(part);
    auto const caret =
        std::find_if(glyphs.begin(), glyphs.end(), [&](Glyph const& glyph) { return glyph.m_at >= place - begin; });

    auto first = caret;
    auto last = caret;
    int before = 0;
    int from = 0;
    auto const showBefore = [&](int columns) {
        while (first != glyphs.begin() && before + std::prev(first)->m_width <= columns)
            before += (--first)->m_width;
    };
    showBefore(kColumnsBefore);
    for (; last != glyphs.end() && before + from + last->m_width <= kColumns; ++last)
        from += last->m_width;
    showBefore(kColumns - from);

    std::string const number = std::to_string(line);
    std::string const margin(std::max<std::size_t>(number.size(), 5) - number.size(), ' ');
    std::string shown = margin + number + " | ";
    std::string below = std::string(margin.size() + number.size(), ' ') + " | ";
    if (first != glyphs.begin() || begin > 0) {
        shown += kDots;
        before += 3;
    }
    for (auto glyph = first; glyph != last; ++glyph)
        shown += glyph->m_shown;
    if (last != glyphs.end() || begin + part.size() < lineText.size())
        shown += kDots;
    return shown + '\n' + below + std::string(static_cast<std::size_t>(before), ' ') + "^\n";
}

} // namespace qel::SectrixCommand
