#include "sectrix_tools/checks/blending/loop_comparison.h"

#include <algorithm>
#include <map>
#include <vector>

namespace qel::SectrixTools::Geometry {

namespace {

using Sectrix::Loop;

/// The places at which a loop bears a name, by name.
using NamePlaces = std::map<std::string, std::vector<int>>;

class LoopComparison {
public:
    LoopComparison(Loop const& first, Loop const& second, int number, std::string const& what,
                   FindingList& findings)
        : m_first(first), m_second(second), m_number(number), m_what(what), m_findings(findings) {}

    void Run() {
        auto const count = m_first.Vertices().size(), otherCount = m_second.Vertices().size();
        if (count != otherCount)
            Add("vertex-count-differs",
                m_what + " has " + std::to_string(count) + " vertices in the first set and " +
                    std::to_string(otherCount) + " in the second",
                -1);
        if (HaveNames(m_first.Positions(), m_second.Positions()))
            CompareNames(count == otherCount);
        else if (count == otherCount)
            CompareIndices();
    }

private:
    void Add(char const* code, std::string message, int vertex) {
        m_findings.Add(Severity::Error, code, std::move(message), {m_number, vertex});
    }

    /// Without names loops are compared place by place.
    void CompareIndices() {
        for (std::size_t i = 0; i < m_first.Vertices().size(); ++i) {
            auto const &one = m_first.Vertices()[i], &other = m_second.Vertices()[i];
            if (one.Index() != other.Index())
                Add("vertex-differs",
                    m_what + " has the index " + std::to_string(one.Index()) + " here in the first set and " +
                        std::to_string(other.Index()) +
                        " in the second, and without names in both sets indices must be equal",
                    static_cast<int>(i));
            else if (one.Exterior() != other.Exterior())
                Add("vertex-differs",
                    m_what +
                        " has another flag here in the second set, and without names in both sets flags must be "
                        "equal",
                    static_cast<int>(i));
        }
    }

    /// \param isSameSize  false where another finding says why the loops do not line up.
    void CompareNames(bool isSameSize) {
        auto const first = ReadNames(m_first, true), second = ReadNames(m_second, false);
        AddRepeated(first, second);
        bool areSame = first.size() == second.size();
        for (auto const& [name, places] : first)
            if (second.count(name) == 0) {
                areSame = false;
                Add("name-missing", m_what + " lacks the name '" + name + "' in the second set", places[0]);
            }
        for (auto const& [name, places] : second)
            if (first.count(name) == 0) {
                areSame = false;
                Add("name-missing", m_what + " lacks the name '" + name + "' in the first set", -1);
            }
        if (areSame && isSameSize && !m_hasRepeated)
            CompareOrder(first, second);
    }

    /// \param isTold  true when vertices without a position are told.
    NamePlaces ReadNames(Loop const& loop, bool isTold) {
        NamePlaces names;
        for (std::size_t i = 0; i < loop.Vertices().size(); ++i) {
            bool found = false;
            auto const index = loop.Vertices()[i].Index();
            auto const& name = loop.Positions().GetPosition(static_cast<std::uint64_t>(index), found).Name();
            if (found && !name.empty())
                names[name].push_back(static_cast<int>(i));
            if (!found)
                Add("index-out-of-range",
                    m_what + " has the index " + std::to_string(index) + (isTold ? " here" : " in the second set") +
                        ", which is out of range",
                    isTold ? static_cast<int>(i) : -1);
        }
        return names;
    }

    void AddRepeated(NamePlaces const& first, NamePlaces const& second) {
        for (auto const& [name, places] : first)
            for (std::size_t i = 1; i < places.size(); ++i) {
                m_hasRepeated = true;
                Add("loop-name-repeated", m_what + " bears the name '" + name + "' twice in the first set",
                    places[i]);
            }
        for (auto const& [name, places] : second)
            if (places.size() > 1) {
                m_hasRepeated = true;
                auto const place = first.find(name);
                Add("loop-name-repeated",
                    m_what + " bears the name '" + name + "' " + std::to_string(places.size()) +
                        " times in the second set",
                    place != first.end() ? place->second[0] : -1);
            }
    }

    /// The same names, each once, in loops of one size.
    void CompareOrder(NamePlaces const& first, NamePlaces const& second) {
        std::vector<std::pair<int, int>> places; // in the first loop and in the second
        for (auto const& [name, place] : first)
            places.emplace_back(place[0], second.at(name)[0]);
        std::sort(places.begin(), places.end());
        auto const size = static_cast<int>(m_first.Vertices().size());
        int falls = 0, rises = 0, odd = -1;
        for (std::size_t i = 0; i < places.size(); ++i) {
            auto const& [place, other] = places[i];
            auto const next = places[(i + 1) % places.size()].second;
            falls += next < other;
            rises += next > other;
            if (odd < 0 && (other - place - places[0].second + places[0].first) % size != 0)
                odd = place;
        }
        if (odd < 0)
            return;
        if (rises <= 1 && places.size() > 2)
            Add("direction-differs", m_what + " runs in the other direction in the second set", -1);
        else if (falls <= 1)
            Add("order-differs",
                m_what +
                    " has other numbers of unnamed vertices between its names in the second set, the first time "
                    "before this vertex",
                odd);
        else
            Add("order-differs",
                m_what + " has its names in another order in the second set, the first time at this vertex", odd);
    }

    Loop const& m_first;
    Loop const& m_second;
    int const m_number;
    std::string const& m_what;
    FindingList& m_findings;
    bool m_hasRepeated = false;
};

} // namespace

void CompareLoops(Loop const& first, Loop const& second, int number, std::string const& what,
                  FindingList& findings) {
    LoopComparison(first, second, number, what, findings).Run();
}

} // namespace qel::SectrixTools::Geometry
