#include "sectrix_tools/checks/document_check.h"

#include "sectrix/foundation/json_tag.h"
#include "sectrix_tools/checks/detail/document_places.h"
#include "sectrix_tools/checks/detail/document_walk.h"
#include "sectrix_tools/checks/detail/positions_check.h"
#include "sectrix_tools/checks/detail/sections_check.h"

#include <unordered_map>

namespace qel::SectrixTools {

namespace {

using Sectrix::JsonTag;

void CheckOutlines(DocumentWalk& walk, Dom const& outlines, DocumentPlaces* places) {
    if (!walk.CheckList(outlines, "positions and of sections"))
        return;
    if (outlines.size() == 0)
        walk.Report("no-outlines", "the list is empty, so there are no positions and no sections");
    PositionsCheck positions(walk);
    SectionsCheck sections(walk, positions, places);
    walk.Elements(outlines, [&](std::uint64_t place, Dom const& element) {
        if (place == 0)
            positions.Check(element);
        else if (place == 1)
            sections.Check(element);
        else if (place == 2)
            walk.Report("element-not-read", "only the first two elements are read: positions and sections");
    });
    if (outlines.size() == 1)
        sections.CheckWholePool();
}

/// The names are the host's; of several equal ones the last value is kept.
void CheckParameters(DocumentWalk& walk, Dom const& parameters) {
    if (!parameters.isObject()) {
        walk.Report("no-parameters",
                    walk.Words(parameters) +
                        " stands where an object of names and numbers is expected; it is not read" +
                        (parameters.isArray() ? ", although it is what writing makes" : ""));
        return;
    }
    std::unordered_map<std::string_view, Dom const*> last;
    for (auto const& [name, value] : parameters.objects())
        last[name] = &value;
    walk.AllMembers(parameters, [&](Dom const& value) {
        if (last[*walk.LastStep().m_key] != &value)
            walk.ReportRepeatedKey();
        else
            walk.CheckNumber(value, "the parameter");
    });
}

void CheckRoot(DocumentWalk& walk, DocumentPlaces* places) {
    auto const& root = walk.Root();
    if (!walk.CheckObject(root))
        return;
    bool const hasCapital = root.has(JsonTag::kOutlinesTag);
    if (!hasCapital && !root.has(JsonTag::kOutlinesLCTag))
        walk.Report("no-outlines", "there is no \"Outlines\", so there are no positions and no sections");
    std::array const keys{JsonTag::kOutlinesTag, JsonTag::kOutlinesLCTag, JsonTag::kParamsTag};
    walk.Members(root, keys, [&](std::size_t which, Dom const& value) {
        if (which == 2)
            CheckParameters(walk, value);
        else if (which == 1 && hasCapital)
            walk.ReportKey("outlines-twice", "\"outlines\" is not read where there is an \"Outlines\"");
        else
            CheckOutlines(walk, value, places);
    });
}

Findings CheckText(std::string_view text, DocumentPlaces* places) {
    DocumentWalk walk(text);
    if (walk.IsRead())
        CheckRoot(walk, places);
    return walk.TakeFindings();
}

} // namespace

Findings CheckDocument(std::string_view text) {
    return CheckText(text, nullptr);
}

Findings CheckDocument(std::string_view text, DocumentPlaces& places) {
    places.clear();
    return CheckText(text, &places);
}

} // namespace qel::SectrixTools
