#include "sectrix_tools/checks/codes.h"
#include "sectrix_tools/checks/document_check.h"
#include "sectrix_tools/checks/extrusion_check.h"

#include "broken_document.h"
#include "sectrix/extrusion/extrusion.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/sections/cross_sections.h"
#include "target.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>

// What the checks say of a document is held against what reading makes of it, element by element: what no finding
// names must have been kept as it is written, and what a finding says was dropped or altered must have been.

using namespace qel;
using namespace qel::Sectrix;
using namespace qel::SectrixTools;

namespace fuzz {

namespace {

using Keys = std::set<std::string>;

std::string Child(std::string const& pointer, std::string const& key) {
    auto child = pointer + '/';
    for (char const letter : key)
        child += letter == '~' ? "~0" : letter == '/' ? "~1" : std::string(1, letter);
    return child;
}

std::string Child(std::string const& pointer, std::uint64_t place) {
    return pointer + '/' + std::to_string(place);
}

bool IsNumber(Dom const& node) {
    return node.isInt() || node.isDouble();
}

/// The findings that something is dropped or altered, each of which must come true once.
class Claims {
public:
    explicit Claims(Findings const& findings) {
        for (auto const& finding : findings) {
            auto const* const code = FindCode(finding.m_code);
            Require(code && code->m_severity == finding.m_severity, "a code of the table");
            if (finding.m_code == "key-repeated")
                ++m_repeats[finding.m_pointer];
            else if (code->m_effect != Effect::Keeps)
                m_open.emplace(finding.m_pointer, code->m_effect);
        }
    }

    /// True when there is such a claim on this very element; it has come true then.
    bool Take(std::string const& pointer, Effect effect) {
        auto const [begin, end] = m_open.equal_range(pointer);
        auto const claim = std::find_if(begin, end, [effect](auto const& each) { return each.second == effect; });
        if (claim == end)
            return false;
        m_open.erase(claim);
        return true;
    }

    /// True when there is such a claim on the element or on something in it. All claims on what is in it go, since
    /// none of it is kept.
    bool TakeWhole(std::string const& pointer, Effect effect) {
        bool isClaimed = false;
        std::vector<decltype(m_open)::iterator> inside;
        for (auto each = m_open.lower_bound(pointer);
             each != m_open.end() && each->first.compare(0, pointer.size(), pointer) == 0; ++each)
            if (each->first.size() == pointer.size() || each->first[pointer.size()] == '/') {
                inside.push_back(each);
                isClaimed = isClaimed || each->second == effect;
            }
        if (!isClaimed)
            return false;
        for (auto const each : inside)
            m_open.erase(each);
        return true;
    }

    /// The members that no one reads must be claimed, and of equal keys all but the last.
    void JudgeMembers(Dom const& node, std::string const& pointer, Keys const& read) {
        std::map<std::string, int> counts;
        for (auto const& [key, value] : node.objects())
            ++counts[key];
        for (auto const& [key, count] : counts) {
            auto const member = Child(pointer, key);
            if (read.count(key))
                Require(m_repeats[member] == count - 1, "equal keys are told, all but one");
            for (int i = 0; !read.count(key) && i < count; ++i)
                Require(Take(member, Effect::Drops), "a member that no one reads is told");
        }
    }

    /// All elements from this place on are passed over.
    void JudgeRest(Dom const& list, std::uint64_t from, std::string const& pointer) {
        Require(Take(Child(pointer, from), Effect::Drops) == (list.size() > from), "what is behind is told");
    }

    void JudgeNumber(Dom const& written, double read, std::string const& pointer) {
        bool const isKept = IsNumber(written) && written.asDouble(0.0) == read;
        Require(Take(pointer, Effect::Alters) != isKept, "a number is kept or told");
        Require(isKept || read == 0.0, "what is no number is 0");
    }

    void JudgeText(Dom const& owner, char const* key, std::string const& read, std::string const& pointer) {
        if (!owner.has(key))
            return Require(read.empty(), "no text, none read");
        bool const isKept = owner[key].isString() && owner[key].asString({}) == read;
        Require(Take(Child(pointer, key), Effect::Alters) != isKept, "a text is kept or told");
    }

    void RequireDone() const { Require(m_open.empty(), "what is told of is dropped or altered"); }

private:
    std::multimap<std::string, Effect> m_open;
    std::map<std::string, int> m_repeats;
};

// Section documents.

void JudgePositions(Dom const& list, std::string const& pointer, CSPositions const& pool, Claims& claims) {
    std::uint64_t next = 0;
    for (std::uint64_t i = 0; i < list.size(); ++i) {
        auto const place = Child(pointer, i);
        if (claims.TakeWhole(place, Effect::DropsPosition))
            continue;
        bool found = false;
        auto const& position = pool.GetPosition(next++, found);
        Require(found, "a position that is not told of is kept");
        bool const isObject = list[i].isObject();
        auto const& coordinates = isObject ? list[i]["coordinates"] : list[i];
        auto const where = isObject ? Child(place, "coordinates") : place;
        Require(coordinates.isArray() && coordinates.size() >= 2, "a position has coordinates");
        for (std::uint64_t axis = 0; axis < 2; ++axis)
            claims.JudgeNumber(coordinates[axis], position.Position()[axis], Child(where, axis));
        claims.JudgeRest(coordinates, 2, where);
        claims.JudgeText(list[i], "name", position.Name(), place);
        claims.JudgeMembers(list[i], place, {"name", "coordinates"});
    }
    Require(next == static_cast<std::uint64_t>(pool.Count()), "a position that is told of is dropped");
}

void JudgeLoop(Dom const& list, std::string const& pointer, Loop const& loop, bool exterior, Claims& claims) {
    Require(list.isArray(), "a loop has indices");
    auto read = loop.Vertices();
    if (!exterior)
        std::reverse(read.begin(), read.end());
    std::vector<std::uint64_t> kept; // the places of the elements
    for (std::uint64_t i = 0; i < list.size(); ++i)
        if (!claims.Take(Child(pointer, i), Effect::Drops))
            kept.push_back(i);
    auto const isClosed = kept.size() == read.size() + 1; // by an index that is the one at the other end
    Require(isClosed || kept.size() == read.size(), "as many vertices as elements that are not told of");
    for (std::size_t i = 0; i < kept.size(); ++i) {
        auto const place = !isClosed ? i : exterior ? i % read.size() : (i > 0 ? i - 1 : read.size() - 1);
        auto const& written = list[kept[i]];
        bool const isKept = IsNumber(written) && written.asDouble(0.0) == read[place].Index();
        Require(claims.Take(Child(pointer, kept[i]), Effect::Alters) != isKept, "an index is kept or told");
    }
}

void JudgeSection(Dom const& node, std::string const& pointer, CrossSection const& section, Claims& claims) {
    claims.JudgeText(node, "assemblyPartName", section.AssemblyPartName(), pointer);
    claims.JudgeMembers(node, pointer, {"assemblyPartName", "loops"});
    auto const& loops = node.isObject() ? node["loops"] : node;
    auto const where = node.isObject() ? Child(pointer, "loops") : pointer;
    std::size_t interior = 0, exterior = 0;
    for (std::uint64_t i = 0; i < loops.size(); ++i) {
        auto const& pair = loops[i];
        auto const place = Child(where, i);
        if (claims.Take(place, Effect::Drops))
            continue;
        Require(pair.size() >= 2, "a loop is a pair");
        bool const isExterior = pair[1].asBool(false);
        Require(claims.Take(Child(place, 1), Effect::Alters) != pair[1].isBool(), "a flag is kept or told");
        Require(isExterior ? exterior++ == 0 : interior < section.InteriorLoops().size(), "a loop is kept");
        JudgeLoop(pair[0], Child(place, 0),
                  isExterior ? section.ExteriorLoop() : section.InteriorLoops()[interior++], isExterior, claims);
        claims.JudgeRest(pair, 2, place);
    }
    Require(exterior == 1 && interior == section.InteriorLoops().size(), "all loops are accounted for");
}

void JudgeOutlines(Dom const& outlines, std::string const& pointer, CrossSections const& set, Claims& claims) {
    auto const& items = set.Items();
    if (!outlines.isArray()) {
        Require(claims.Take(pointer, Effect::Drops) && set.Positions().Count() == 0 && items.empty(),
                "no outlines");
        return;
    }
    for (std::uint64_t i = 0; i < std::min<std::uint64_t>(outlines.size(), 2); ++i)
        Require(claims.Take(Child(pointer, i), Effect::Drops) != outlines[i].isArray(), "what is no list is told");
    claims.JudgeRest(outlines, 2, pointer);
    JudgePositions(outlines[0], Child(pointer, 0), set.Positions(), claims);
    if (outlines.size() == 1) {
        Require(items.size() == 1 &&
                    items[0].ExteriorLoop().Vertices().size() == static_cast<std::size_t>(set.Positions().Count()),
                "one section through all");
        return;
    }
    std::size_t next = 0;
    for (std::uint64_t i = 0; i < outlines[1].size(); ++i)
        if (auto const place = Child(Child(pointer, 1), i); !claims.TakeWhole(place, Effect::DropsSection)) {
            Require(next < items.size(), "a section that is not told of is kept");
            JudgeSection(outlines[1][i], place, items[next++], claims);
        }
    Require(next == items.size(), "a section that is told of is dropped");
}

void JudgeParameters(Dom const& root, std::map<std::string, double> const& read, Claims& claims) {
    auto const& written = root["Params"];
    if (!written.isObject()) {
        Require(claims.Take("/Params", Effect::Drops) == root.has("Params") && read.empty(), "no parameters");
        return;
    }
    std::map<std::string, Dom const*> last;
    Keys names;
    for (auto const& [name, value] : written.objects()) {
        last[name] = &value;
        names.insert(name);
    }
    claims.JudgeMembers(written, "/Params", names);
    Require(names.size() == read.size(), "as many parameters as names");
    for (auto const& [name, value] : last)
        claims.JudgeNumber(*value, read.at(name), Child("/Params", name));
}

void JudgeSet(Dom const& root, CrossSections const& set, Claims& claims) {
    claims.JudgeMembers(root, "", {"Outlines", "outlines", "Params"});
    bool const hasCapital = root.has("Outlines");
    if (hasCapital && root.has("outlines"))
        Require(claims.Take("/outlines", Effect::Drops), "the second key is told");
    if (hasCapital || root.has("outlines"))
        JudgeOutlines(root[hasCapital ? "Outlines" : "outlines"], hasCapital ? "/Outlines" : "/outlines", set,
                      claims);
    JudgeParameters(root, set.Parameters(), claims);
}

// Extrusions and end planes.

void JudgePoint(Dom const& node, Position const& read, std::string const& pointer, Claims& claims) {
    double const coordinates[] = {read.X(), read.Y(), read.Z()};
    for (std::uint64_t axis = 0; axis < 3; ++axis)
        if (axis < node.size())
            claims.JudgeNumber(node[axis], coordinates[axis], Child(pointer, axis));
    claims.JudgeRest(node, 3, pointer);
    Require(claims.Take(pointer, Effect::Alters) == (node.size() < 3) && read.IsValid() == (node.size() >= 3),
            "a point that lacks numbers is told");
}

void JudgeBool(Dom const& owner, char const* key, bool read, std::string const& pointer, Claims& claims) {
    bool const isKept = !owner.has(key) || (owner[key].isBool() && owner[key].asBool(false) == read);
    Require(claims.Take(Child(pointer, key), Effect::Alters) != isKept, "a flag is kept or told");
}

/// A list under a key; `judge` takes each element that is an object, any other is read as an empty one.
template <class Element, class Judge>
void JudgeList(Dom const& owner, char const* key, std::vector<Element> const& read, std::string const& pointer,
               Claims& claims, Judge judge) {
    auto const where = Child(pointer, key);
    bool const isList = owner[key].isArray();
    Require(claims.Take(where, Effect::Drops) == (owner.has(key) && !isList), "what is no list is told");
    Require(read.size() == owner[key].size(), "as many as elements");
    for (std::uint64_t i = 0; i < read.size(); ++i)
        judge(owner[key][i], read[i], Child(where, i));
}

void JudgeProfile(Dom const& node, Profile const& profile, std::string const& pointer, Claims& claims) {
    Require(claims.Take(pointer, Effect::Alters) != node.isObject(), "what is no profile is told");
    claims.JudgeMembers(node, pointer, {"Points"});
    JudgeList(node, "Points", profile.Positions(), pointer, claims,
              [&](auto const& point, auto const& position, auto const& place) {
                  JudgePoint(point, position, place, claims);
              });
}

void JudgePart(Dom const& root, Claims& claims) {
    Extrusion part;
    part.from(root);
    claims.JudgeMembers(root, "", {"assemblyPartName", "Sections"});
    claims.JudgeText(root, "assemblyPartName", part.AssemblyPartName(), "");
    JudgeList(root, "Sections", part.Sections(), "", claims,
              [&](Dom const& node, ExtrudedSection const& section, std::string const& place) {
                  Require(claims.Take(place, Effect::Alters) != node.isObject(), "what is no section is told");
                  claims.JudgeMembers(node, place, {"Exterior", "Profiles"});
                  JudgeBool(node, "Exterior", section.Exterior(), place, claims);
                  JudgeList(node, "Profiles", section.Profiles(), place, claims,
                            [&](auto const& child, auto const& profile, auto const& where) {
                                JudgeProfile(child, profile, where, claims);
                            });
              });
}

void JudgePlane(Dom const& root, Claims& claims) {
    EndPlane plane;
    plane.from(root);
    claims.JudgeMembers(root, "", {"Start", "Origin", "Normal", "Skew"});
    JudgeBool(root, "Start", plane.IsStart(), "", claims);
    if (root.has("Origin"))
        JudgePoint(root["Origin"], plane.Origin(), "/Origin", claims);
    if (root.has("Normal"))
        JudgePoint(root["Normal"], plane.Normal(), "/Normal", claims);
    if (root.has("Skew"))
        claims.JudgeNumber(root["Skew"], plane.Skew(), "/Skew");
}

void JudgeExtrusion(Dom const& root, Claims& claims) {
    if (root.has("Sections") || root.has("assemblyPartName"))
        JudgePart(root, claims);
    else if (root.has("Start") || root.has("Origin") || root.has("Normal") || root.has("Skew"))
        JudgePlane(root, claims);
    else
        claims.JudgeMembers(root, "", {}); // of either nothing is read
}

// Places.

Dom const& NodeAt(Dom const& root, std::string const& pointer) {
    auto const* node = &root;
    for (std::size_t begin = 0; begin < pointer.size();) {
        auto const end = std::min(pointer.find('/', begin + 1), pointer.size());
        std::string key;
        for (auto i = begin + 1; i < end; ++i)
            key += pointer[i] != '~' ? pointer[i] : pointer[++i] == '0' ? '~' : '/';
        begin = end;
        if (node->isArray()) {
            node = &(*node)[std::stoull(key)];
            continue;
        }
        Dom const* member = nullptr;
        for (auto const& [name, value] : node->objects())
            member = name == key ? &value : member;
        Require(member, "a pointer leads to an element");
        node = member;
    }
    return *node;
}

bool BeginsLike(Dom const& node, char const* text) {
    if (node.isArray() || node.isObject() || node.isString())
        return *text == (node.isArray() ? '[' : node.isObject() ? '{' : '"');
    if (IsNumber(node))
        return std::strtod(text, nullptr) == node.asDouble(0.0);
    return *text == (!node.isBool() ? 'n' : node.asBool(false) ? 't' : 'f');
}

/// Each finding must stand at the text of its element, or at a key, and none behind a later one.
void JudgePlaces(Findings const& findings, std::string const& text, Dom const& root) {
    std::vector<std::size_t> lines{0};
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '\n')
            lines.push_back(i + 1);
    std::size_t last = 0;
    for (auto const& finding : findings) {
        Require(finding.m_line >= 1 && static_cast<std::size_t>(finding.m_line) <= lines.size() &&
                    finding.m_column >= 1,
                "a line of the text");
        auto const place =
            lines[static_cast<std::size_t>(finding.m_line) - 1] + static_cast<std::size_t>(finding.m_column) - 1;
        Require(place >= last && place <= text.size(), "a column of the text, in order");
        last = place;
        Require(finding.m_message.find('\n') == std::string::npos, "a message of one line");
        bool const isAtKey = finding.m_code == "unknown-key" || finding.m_code == "key-repeated" ||
                             finding.m_code == "outlines-twice";
        if (isAtKey)
            Require(text[place] == '"', "a key");
        else if (!finding.m_pointer.empty())
            Require(BeginsLike(NodeAt(root, finding.m_pointer), text.c_str() + place), "the element");
    }
}

/// The place in the set that a finding on an element gives must hold what was read of it.
void JudgeSetPlaces(Findings const& findings, CrossSections const& set, Dom const& root) {
    for (auto const& finding : findings) {
        if (finding.m_section < 0)
            continue;
        auto const& section = set.Items().at(static_cast<std::size_t>(finding.m_section));
        if (finding.m_loop < 0)
            continue;
        auto const& loop = finding.m_loop == 0
                               ? section.ExteriorLoop()
                               : section.InteriorLoops().at(static_cast<std::size_t>(finding.m_loop) - 1);
        if (finding.m_vertex >= 0)
            Require(loop.Vertices().at(static_cast<std::size_t>(finding.m_vertex)).Index() ==
                        static_cast<int>(NodeAt(root, finding.m_pointer).asInt(0)),
                    "the vertex of the element");
    }
}

std::string FindingsText(Findings const& findings) {
    std::string text;
    for (auto const& finding : findings)
        text += std::to_string(finding.m_line) + ':' + std::to_string(finding.m_column) + ' ' + finding.m_message +
                ' ' + finding.m_code + ' ' + finding.m_pointer + ' ' + std::to_string(finding.m_section) + ' ' +
                std::to_string(finding.m_loop) + ' ' + std::to_string(finding.m_vertex) + '\n';
    return text;
}

/// What is true of both checks: `judge` is called where the text is a document.
template <class Judge>
void JudgeText(Findings const& findings, std::string const& text, Judge judge) {
    Dom root;
    std::string reason;
    bool const isRead = DomReaderJson::FromString(root, text.c_str(), &reason);
    bool const isAllDropped = std::any_of(findings.begin(), findings.end(), [](Finding const& finding) {
        return FindCode(finding.m_code)->m_effect == Effect::DropsAll;
    });
    for (auto const& finding : findings)
        Require(finding.m_message != reason, "a place and a reason for what is no document");
    Require(isAllDropped == (!isRead || !root.isObject()), "what is no document is told");
    JudgePlaces(findings, text, root);
    if (isAllDropped)
        return;
    Claims claims(findings);
    Require(claims.Take("", Effect::Drops) == (text.find('\0') != std::string::npos), "a zero byte is told");
    judge(root, claims);
    claims.RequireDone();
}

} // namespace

std::string RunChecks(std::string const& bytes) {
    bool const isShape = bytes.compare(0, 5, "shape") == 0;
    auto const text = isShape ? BrokenDocument(SeedIn(bytes.substr(5))) : bytes;
    std::istringstream stream(text);
    CrossSections set;
    set.From(stream);
    auto const findings = CheckDocument(text);
    JudgeText(findings, text, [&](Dom const& root, Claims& claims) {
        JudgeSet(root, set, claims);
        JudgeSetPlaces(findings, set, root);
    });
    if (std::any_of(findings.begin(), findings.end(),
                    [](Finding const& finding) { return FindCode(finding.m_code)->m_effect == Effect::DropsAll; }))
        Require(set.Positions().Count() == 0 && set.Items().empty() && set.Parameters().empty(), "nothing is read");

    auto const others = CheckExtrusion(text);
    JudgeText(others, text, JudgeExtrusion);
    return FindingsText(findings) + FindingsText(others);
}

} // namespace fuzz
