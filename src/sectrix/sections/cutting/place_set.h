#pragma once

#include "sectrix/sections/cutting/lowest_bit.h"
#include "sectrix/sections/cutting/scratch.h"

#include <cstddef>
#include <cstdint>

/// \file
/// A set of places on a ring, with the next one from a given place on.

namespace qel::Sectrix {

/// A set of places as a bit set of two levels: one bit a place, and one bit a word of these that is not zero. So
/// the next member is found in a few steps, however sparse the set is.
class PlaceSet {
public:
    explicit PlaceSet(Scratch& memory) : m_words(memory), m_filled(memory) {}

    /// Empties the set and makes room for the places 0 to `count` - 1.
    void Reset(int count) {
        m_words.assign(static_cast<std::size_t>(count) / 64 + 1, 0);
        m_filled.assign(m_words.size() / 64 + 1, 0);
    }

    void Insert(int place) {
        auto const p = static_cast<std::size_t>(place);
        m_words[p / 64] |= Bit(p);
        m_filled[p / 4096] |= Bit(p / 64);
    }

    void Erase(int place) {
        auto const p = static_cast<std::size_t>(place);
        m_words[p / 64] &= ~Bit(p);
        if (m_words[p / 64] == 0)
            m_filled[p / 4096] &= ~Bit(p / 64);
    }

    bool Has(int place) const {
        auto const p = static_cast<std::size_t>(place);
        return (m_words[p / 64] & Bit(p)) != 0;
    }

    /// The first member from `place` on, around the end if need be; -1 when the set is empty.
    int FirstFrom(int place) const {
        int const found = FirstBehind(static_cast<std::size_t>(place));
        return found >= 0 || place == 0 ? found : FirstBehind(0);
    }

private:
    static std::uint64_t Bit(std::size_t place) { return std::uint64_t{1} << (place % 64); }

    /// The bits of a word from that of `place` on.
    static std::uint64_t From(std::uint64_t word, std::size_t place) {
        return word & (~std::uint64_t{0} << (place % 64));
    }

    int FirstBehind(std::size_t place) const {
        std::size_t word = place / 64;
        std::uint64_t bits = From(m_words[word], place);
        if (bits == 0) {
            std::size_t group = ++word / 64;
            std::uint64_t filled = group < m_filled.size() ? From(m_filled[group], word) : 0;
            while (filled == 0 && ++group < m_filled.size())
                filled = m_filled[group];
            if (filled == 0)
                return -1;
            word = group * 64 + LowestBit(filled);
            bits = m_words[word];
        }
        return static_cast<int>(word * 64 + LowestBit(bits));
    }

    Scratch::List<std::uint64_t> m_words;
    /// A bit for each word that is not zero.
    Scratch::List<std::uint64_t> m_filled;
};

} // namespace qel::Sectrix
