#include "sectrix/extrusion/extrusion.h"
#include "result.h"
#include "sectrix/foundation/json_tag.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "target.h"

using namespace qel;
using namespace qel::Sectrix;

namespace fuzz {

namespace {

std::string Text(Position const& position) {
    return Number(position.X()) + Number(position.Y()) + Number(position.Z()) +
           (position.IsValid() ? "\n" : " !\n");
}

std::string Text(Profile const& profile) {
    std::string text = "profile\n";
    for (auto const& position : profile.Positions())
        text += Text(position);
    return text;
}

std::string Text(ExtrudedSection const& section) {
    std::string text = section.Exterior() ? "outline\n" : "hole\n";
    for (auto const& profile : section.Profiles())
        text += Text(profile);
    return text;
}

std::string Text(Extrusion const& part) {
    auto text = part.AssemblyPartName() + '\n';
    for (auto const& section : part.Sections())
        text += Text(section);
    return text;
}

std::uint64_t Count(Dom const& list) {
    return list.isArray() ? list.size() : 0;
}

/// Each element of the document's lists must be there, of whatever kind.
void CheckCounts(Dom const& dom, Extrusion const& part) {
    auto const& sections = dom[JsonTag::kSectionsTag];
    Require(part.Sections().size() == Count(sections), "as many sections as elements");
    for (std::uint64_t i = 0; i < Count(sections); ++i) {
        auto const& profiles = sections[i][JsonTag::kProfilesTag];
        Require(part.Sections()[i].Profiles().size() == Count(profiles), "as many profiles as elements");
        for (std::uint64_t j = 0; j < Count(profiles); ++j)
            Require(part.Sections()[i].Profiles()[j].Positions().size() == Count(profiles[j][JsonTag::kPointsTag]),
                    "as many positions as elements");
    }
}

void CheckPosition(Position const& position) {
    Dom dom;
    position.to(dom);
    Position back;
    Require(back.from(dom) && Text(back) == Text(position), "a position reads back");
    Require(position.Near(position), "near to itself");
}

} // namespace

std::string RunExtrusion(std::string const& bytes) {
    Dom dom;
    DomReaderJson::FromString(dom, bytes.c_str(), nullptr);
    Extrusion part;
    EndPlane plane;
    Position position;
    Require(part.from(dom) && plane.from(dom) && position.from(dom), "reading always succeeds");
    CheckCounts(dom, part);
    CheckPosition(position);
    CheckPosition(plane.Normal());

    Extrusion const copy = part;
    Require(Text(copy) == Text(part), "a copy is alike");
    Require(part.from(dom) && part.Sections().size() == 2 * copy.Sections().size(), "a second read adds");
    part = Extrusion(copy);
    Require(Text(copy) == Text(part), "what is assigned is alike");
    return Text(part) + (plane.IsStart() ? "start" : "end") + Text(plane.Origin()) + Text(plane.Normal()) +
           Number(plane.Skew()) + Text(position);
}

} // namespace fuzz
