#include "sectrix_tools/checks/blend_check.h"
#include "support/drafts.h"
#include "support/shapes.h"
#include "support/test_data.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

using namespace qel::Sectrix;
using namespace qel::SectrixTools;
using namespace sectrix_tests;
using shapes::Draft;
using shapes::MakeSet;
using shapes::Ring;

namespace {

/// Sections of small rings with few names, so that all is like all but for a little.
Draft RandomDraft(shapes::Random& random) {
    int const naming = shapes::Below(random, 5);
    Draft draft(std::size_t(shapes::Below(random, 4)));
    for (auto& section : draft)
        for (int ring = 0, rings = 1 + shapes::Below(random, 4); ring < rings; ++ring) {
            auto const place = std::to_string(&section - &draft[0]) + "." + std::to_string(ring) + ".";
            section.emplace_back();
            for (int i = 0, corners = 2 + shapes::Below(random, 4); i < corners; ++i)
                section.back().push_back({naming == 0 || (naming == 4 && ring > 0) ? ""
                                          : naming == 1 || shapes::Below(random, 3)
                                              ? place + std::to_string(i)
                                              : std::string(1, char('A' + i))});
        }
    return draft;
}

/// The draft with a few changes of all kinds that the check knows.
Draft Change(shapes::Random& random, Draft draft) {
    for (int changes = shapes::Below(random, 4); changes > 0 && !draft.empty(); --changes) {
        auto const at = std::size_t(shapes::Below(random, int(draft.size())));
        auto& section = draft[at];
        auto& ring = section[std::size_t(shapes::Below(random, int(section.size())))];
        auto const corner = ring.begin() + (ring.empty() ? 0 : shapes::Below(random, int(ring.size())));
        switch (ring.empty() ? 9 : shapes::Below(random, 10)) {
        case 0:
            std::reverse(ring.begin(), ring.end());
            break;
        case 1:
            std::iter_swap(ring.begin(), corner);
            break;
        case 2:
            ring.erase(corner);
            break;
        case 3:
            corner->name = ring[0].name;
            break;
        case 4:
            corner->name = "*";
            break;
        case 5:
            corner->name = "!";
            break;
        case 6:
            corner->name.clear();
            break;
        case 7:
            std::swap(section, draft[0]);
            break;
        case 8:
            section.size() > 1 ? section.pop_back() : section.push_back(ring);
            break;
        default:
            std::rotate(ring.begin(), corner, ring.end());
        }
    }
    if (shapes::Below(random, 12) == 0)
        draft.emplace_back(1, Ring(3));
    return draft;
}

TEST(BlendCheck, HasErrorsExactlyForSetsThatAreNotCompatible) {
    shapes::Random random(1);
    std::set<std::string> codes;
    int compatible = 0;
    for (int i = 0; i < 5000; ++i) {
        auto const draft = RandomDraft(random);
        auto const first = MakeSet(draft), second = MakeSet(Change(random, draft));
        auto const findings = CheckBlend(first, second);
        ASSERT_NE(HasErrors(findings), first.IsCompatible(second, false)) << i;
        compatible += first.IsCompatible(second, false);
        for (auto const& finding : findings) {
            codes.insert(finding.m_code);
            // Without a section it would say no more than that the sets are not compatible.
            EXPECT_TRUE(finding.m_code != "section-without-partner" || finding.m_section >= 0);
        }
    }
    EXPECT_GT(compatible, 1000);
    EXPECT_LT(compatible, 4000);
    for (auto const* code : {"direction-differs", "hole-count-differs", "vertex-differs", "index-out-of-range",
                             "loop-name-repeated", "loop-without-names", "name-count-differs", "name-missing",
                             "order-differs", "section-count-differs", "vertex-count-differs"})
        EXPECT_EQ(codes.count(code), 1u) << code;
}

/// Pairs of documents with all that is said of them, places and words.
TEST(BlendCheck, OfDocuments) {
    auto const cases = FileDom("checks/blends.json");
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(cases[i]["case"].asString(""));
        CrossSections first, second;
        first.From(cases[i]["first"]);
        second.From(cases[i]["second"]);
        std::vector<std::string> said, expected;
        for (auto const& finding : CheckBlend(first, second))
            said.push_back(std::to_string(finding.m_section) + ' ' + std::to_string(finding.m_loop) + ' ' +
                           std::to_string(finding.m_vertex) + ": " + SeverityName(finding.m_severity) + ": " +
                           finding.m_message + " [" + finding.m_code + ']');
        for (std::size_t j = 0; j < cases[i]["findings"].size(); ++j)
            expected.push_back(cases[i]["findings"][j].asString(""));
        EXPECT_EQ(said, expected);
    }
    auto const blends = FileDom("alignment/blends.json");
    for (std::size_t i = 0; i < blends.size(); ++i) {
        CrossSections first, second;
        first.From(blends[i]["first"]);
        second.From(blends[i]["second"]);
        EXPECT_NE(HasErrors(CheckBlend(first, second)), first.IsCompatible(second, false)) << i;
    }
}

/// Sections and holes in other places, so many that a search for each would take minutes.
TEST(BlendCheck, OfManyEnds) {
    Draft draft(1500, std::vector<Ring>(2, Ring(4)));
    for (auto& section : draft)
        section.back()[2].name = std::to_string(&section - &draft[0]);
    auto const first = MakeSet(draft);
    std::reverse(draft.begin(), draft.end());
    EXPECT_FALSE(HasErrors(CheckBlend(first, MakeSet(draft))));
    draft[0].back()[2].name = "new";
    EXPECT_TRUE(HasErrors(CheckBlend(first, MakeSet(draft))));
}

} // namespace
