#include "section_set.h"

#include "sectrix/foundation/json_tag.h"
#include "sectrix/interfaces/dom_reader_json.h"

#include <algorithm>
#include <functional>
#include <pybind11/pybind11.h>
#include <utility>

namespace sectrix_python {

using namespace qel;
using namespace qel::Sectrix;

SectionSet::~SectionSet() {
    if (PyGILState_Check() == 0)
        return;
    pybind11::gil_scoped_release const unlocked;
    CrossSections const gone(std::move(m_set));
}

std::unique_ptr<SectionSet> SectionSet::FromText(std::string const& text, double scale) {
    Dom document;
    if (!DomReaderJson::FromString(document, text.c_str(), nullptr))
        return nullptr;
    CrossSections set(scale);
    set.From(document);
    return std::make_unique<SectionSet>(std::move(set));
}

std::vector<std::unique_lock<std::mutex>> SectionSet::LockAll(std::vector<SectionSet*> sets) {
    // One order for all threads, so that none waits for another in a circle.
    std::sort(sets.begin(), sets.end(), std::less<>());
    sets.erase(std::unique(sets.begin(), sets.end()), sets.end());
    std::vector<std::unique_lock<std::mutex>> locks;
    for (auto* set : sets)
        locks.emplace_back(set->m_mutex);
    return locks;
}

Dom SectionSet::Document() {
    // A copy, whose derived state can go without touching that of the set.
    CrossSections copy = With([](CrossSections const& set) { return CrossSections(set); });
    copy.ResetConvexLoops();
    Dom document;
    copy.To(document);
    if (!copy.Parameters().empty()) {
        auto& parameters = document[JsonTag::kParamsTag].toObject();
        for (auto const& [name, value] : copy.Parameters())
            parameters[name] = Dom(value);
    }
    return document;
}

void SectionSet::Transform(Mat<3, double> const& matrix) {
    // A set gives its pool away for reading only. So the moved positions make a new set, and the sections, which
    // refer to them by index, are read into it.
    Dom const document = Document();
    Dom sections;
    sections[JsonTag::kOutlinesTag].append().toArray();
    sections[JsonTag::kOutlinesTag].append() = Dom(document[JsonTag::kOutlinesTag][std::uint64_t{1}]);
    if (document.has(JsonTag::kParamsTag))
        sections[JsonTag::kParamsTag] = Dom(document[JsonTag::kParamsTag]);
    With([&](CrossSections& set) {
        set.ResetConvexLoops();
        CSPositions pool = set.Positions();
        pool.Transform(matrix);
        CrossSections moved(pool, false);
        moved.GetItems().clear();
        moved.From(sections);
        set = std::move(moved);
    });
}

void SectionSet::NormalizeVertical() {
    With([](CrossSections& set) {
        set.ResetConvexLoops();
        set.NormalizeVertical();
    });
}

} // namespace sectrix_python
