#pragma once

#include "sectrix/interfaces/dom.h"
#include "sectrix/sections/cross_sections.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

/// \file
/// A set of sections as Python holds it.

namespace sectrix_python {

/// A set of sections that several threads of Python may use at once.
///
/// Python knows no constant objects, and a section may be asked for its convex loops from any thread, which writes
/// to the section and to the pool of the whole set. So every use of the set takes the lock for as long as it lasts.
class SectionSet {
public:
    /// Takes a set over.
    explicit SectionSet(qel::Sectrix::CrossSections set) : m_set(std::move(set)) {}
    /// Frees the set without the interpreter's lock, since a large one takes a while.
    ~SectionSet();

    /// What a document reads as, coordinates times `scale`; nothing where the text is no JSON.
    static std::unique_ptr<SectionSet> FromText(std::string const& text, double scale);

    /// Calls `use` with the set while no other thread uses it, and returns what that returns.
    template <class Use>
    auto With(Use const& use) {
        std::lock_guard<std::mutex> const lock(m_mutex);
        return use(m_set);
    }

    /// The same with two sets, which may be one and the same object.
    template <class Use>
    static auto WithBoth(SectionSet& first, SectionSet& second, Use const& use) {
        if (&first == &second)
            return first.With([&](qel::Sectrix::CrossSections& set) { return use(set, set); });
        std::scoped_lock const locks(first.m_mutex, second.m_mutex);
        return use(first.m_set, second.m_set);
    }

    /// Takes the locks of all these sets, each of which may stand there several times, for as long as the result
    /// lives.
    static std::vector<std::unique_lock<std::mutex>> LockAll(std::vector<SectionSet*> sets);
    /// The set itself, for one who holds its lock.
    qel::Sectrix::CrossSections const& Locked() const { return m_set; }

    /// The set as a document that reads as the same set, without what is derived from it: feet of bridges are not
    /// positions of it. Parameters stand in it as an object, the form that is read.
    qel::Dom Document();

    /// Maps all positions. What is derived is dropped, since it does not follow.
    void Transform(qel::Mat<3, double> const& matrix);

    /// Shifts the set so that its lowest position stands at y = 0. What is derived is dropped.
    void NormalizeVertical();

private:
    std::mutex m_mutex;
    qel::Sectrix::CrossSections m_set;
};

} // namespace sectrix_python
