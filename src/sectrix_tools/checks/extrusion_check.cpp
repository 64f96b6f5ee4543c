#include "sectrix_tools/checks/extrusion_check.h"

#include "sectrix/foundation/json_tag.h"
#include "sectrix_tools/checks/detail/document_walk.h"
#include "sectrix_tools/checks/detail/nearest_key.h"

#include <algorithm>

namespace qel::SectrixTools {

namespace {

using Sectrix::JsonTag;

constexpr std::array kPartKeys{JsonTag::kCSAssemblyPartNameTag, JsonTag::kSectionsTag};
constexpr std::array kSectionKeys{JsonTag::kExteriorTag, JsonTag::kProfilesTag};
constexpr std::array kProfileKeys{JsonTag::kPointsTag};
constexpr std::array kPlaneKeys{JsonTag::kStartTag, JsonTag::kOriginTag, JsonTag::kNormalTag, JsonTag::kSkewTag};

/// A point has what it lacks from infinity, and so is no valid position.
void CheckPoint(DocumentWalk& walk, Dom const& point) {
    if (!point.isArray() || point.size() < 3)
        walk.Report("point-incomplete", walk.Words(point) +
                                            (point.isArray() ? " has fewer than three numbers"
                                                             : " stands where x, y and z are expected") +
                                            "; what is missing is read as infinity");
    if (!point.isArray())
        return;
    walk.Elements(point, [&](std::uint64_t place, Dom const& coordinate) {
        if (place < 3)
            walk.CheckNumber(coordinate, "the coordinate");
        else if (place == 3)
            walk.Report("coordinates-too-many",
                        "only the first three of " + std::to_string(point.size()) +
                            " coordinates are read; a comma may stand where a decimal point is meant");
    });
}

/// The list that the walk stands on; `visit` takes each element.
template <class Visit>
void CheckListOf(DocumentWalk& walk, Dom const& list, std::string const& what, Visit visit) {
    if (!walk.CheckList(list, what.c_str()))
        return;
    if (list.size() == 0)
        walk.Report("nothing-in-it", "there are no " + what);
    walk.Elements(list, [&](std::uint64_t, Dom const& element) { visit(element); });
}

/// True for an object; an element of another kind is read as one without content, that of an object without
/// members.
bool CheckElement(DocumentWalk& walk, Dom const& element, char const* list, std::string const& content) {
    if (!element.isObject())
        walk.Report("no-content", walk.Words(element) +
                                      " stands where an object is expected; it is read as one without " + content);
    else if (!element.has(list))
        walk.Report("nothing-in-it", std::string("there are no \"") + list + '"');
    return element.isObject();
}

void CheckProfile(DocumentWalk& walk, Dom const& profile) {
    if (!CheckElement(walk, profile, JsonTag::kPointsTag, "points"))
        return;
    walk.Members(profile, kProfileKeys, [&](std::size_t, Dom const& points) {
        if (points.isArray() && points.size() == 1)
            walk.Report("profile-too-short", "one point makes no profile");
        CheckListOf(walk, points, "points", [&](Dom const& point) { CheckPoint(walk, point); });
    });
}

void CheckSection(DocumentWalk& walk, Dom const& section) {
    if (!CheckElement(walk, section, JsonTag::kProfilesTag, "profiles"))
        return;
    walk.Members(section, kSectionKeys, [&](std::size_t which, Dom const& value) {
        if (which == 0)
            walk.CheckBoolean(value, "\"Exterior\"", "false");
        else
            CheckListOf(walk, value, "profiles", [&](Dom const& profile) { CheckProfile(walk, profile); });
    });
}

void CheckPart(DocumentWalk& walk, Dom const& part) {
    CheckElement(walk, part, JsonTag::kSectionsTag, "sections");
    walk.Members(part, kPartKeys, [&](std::size_t which, Dom const& value) {
        if (which == 0)
            walk.CheckText(value, "the name");
        else
            CheckListOf(walk, value, "sections", [&](Dom const& section) { CheckSection(walk, section); });
    });
}

void CheckPlane(DocumentWalk& walk, Dom const& plane) {
    if (!plane.has(JsonTag::kOriginTag) || !plane.has(JsonTag::kNormalTag))
        walk.Report("no-plane", "an end plane needs both \"Origin\" and \"Normal\"");
    walk.Members(plane, kPlaneKeys, [&](std::size_t which, Dom const& value) {
        if (which == 0)
            walk.CheckBoolean(value, "\"Start\"", "true");
        else if (which == 3)
            walk.CheckNumber(value, "the skew");
        else {
            bool isZero = value.size() >= 3;
            for (std::uint64_t i = 0; i < 3 && isZero; ++i)
                isZero = value[i].asDouble(1.0) == 0.0;
            if (which == 2 && isZero)
                walk.Report("normal-zero", "the normal has no direction");
            CheckPoint(walk, value);
        }
    });
}

bool IsOneOf(std::string_view key, char const* const* begin, char const* const* end) {
    return std::any_of(begin, end, [key](std::string_view each) { return each == key; });
}

bool IsPlane(Dom const& root) {
    std::vector<char const*> known(kPartKeys.begin(), kPartKeys.end());
    known.insert(known.end(), kPlaneKeys.begin(), kPlaneKeys.end());
    bool isPlane = false;
    for (auto const& [key, value] : root.objects()) {
        if (IsOneOf(key, kPartKeys.begin(), kPartKeys.end()))
            return false;
        auto const* const nearest = NearestKey(key, known);
        isPlane = isPlane || (nearest && IsOneOf(nearest, kPlaneKeys.begin(), kPlaneKeys.end()));
    }
    return isPlane;
}

} // namespace

Findings CheckExtrusion(std::string_view text) {
    DocumentWalk walk(text);
    if (auto const& root = walk.Root(); walk.IsRead() && walk.CheckObject(root)) {
        if (IsPlane(root))
            CheckPlane(walk, root);
        else
            CheckPart(walk, root);
    }
    return walk.TakeFindings();
}

} // namespace qel::SectrixTools
