#include "sectrix/extrusion/extrusion.h"
#include "sectrix/foundation/json_tag.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "support/result.h"
#include "target.h"

using namespace qel;
using namespace qel::Sectrix;

namespace fuzz {

namespace {

std::string ProfileText(Profile const& profile) {
    std::string text = "profile\n";
    for (auto const& position : profile.Positions())
        text += Text(position);
    return text;
}

std::string SectionText(ExtrudedSection const& section) {
    std::string text = section.Exterior() ? "outline\n" : "hole\n";
    for (auto const& profile : section.Profiles())
        text += ProfileText(profile);
    return text;
}

std::string PartText(Extrusion const& part) {
    auto text = part.AssemblyPartName() + '\n';
    for (auto const& section : part.Sections())
        text += SectionText(section);
    return text;
}

std::uint64_t Count(Dom const& list) {
    return list.isArray() ? list.size() : 0;
}

/// What a position is read as, by its rules.
std::string ExpectedText(Dom const& dom) {
    Position position;
    if (dom.size() > 0)
        position.SetX(dom[0].asDouble(0.0));
    if (dom.size() > 1)
        position.SetY(dom[1].asDouble(0.0));
    if (dom.size() > 2)
        position.SetZ(dom[2].asDouble(0.0));
    return Text(position);
}

/// Each element of the document's lists must be there, of whatever kind, and hold what the document says.
void CheckPart(Dom const& dom, Extrusion const& part) {
    Require(part.AssemblyPartName() == dom[JsonTag::kCSAssemblyPartNameTag].asString({}), "the name");
    auto const& sections = dom[JsonTag::kSectionsTag];
    Require(part.Sections().size() == Count(sections), "as many sections as elements");
    for (std::uint64_t i = 0; i < Count(sections); ++i) {
        auto const& section = part.Sections()[i];
        bool const isGiven = sections[i].has(JsonTag::kExteriorTag);
        Require(section.Exterior() == (!isGiven || sections[i][JsonTag::kExteriorTag].asBool(false)), "the flag");
        auto const& profiles = sections[i][JsonTag::kProfilesTag];
        Require(section.Profiles().size() == Count(profiles), "as many profiles as elements");
        for (std::uint64_t j = 0; j < Count(profiles); ++j) {
            auto const& positions = section.Profiles()[j].Positions();
            auto const& points = profiles[j][JsonTag::kPointsTag];
            Require(positions.size() == Count(points), "as many positions as elements");
            for (std::uint64_t k = 0; k < Count(points); ++k)
                Require(Text(positions[k]) == ExpectedText(points[k]), "a position");
        }
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
    CheckPart(dom, part);
    Require(Text(position) == ExpectedText(dom), "the position");
    CheckPosition(position);
    CheckPosition(plane.Normal());

    Extrusion const copy = part;
    Require(PartText(copy) == PartText(part), "a copy is alike");
    Require(part.from(dom) && part.Sections().size() == 2 * copy.Sections().size(), "a second read adds");
    part = Extrusion(copy);
    Require(PartText(copy) == PartText(part), "what is assigned is alike");
    return PartText(part) + (plane.IsStart() ? "start" : "end") + Text(plane.Origin()) + Text(plane.Normal()) +
           Number(plane.Skew()) + Text(position);
}

} // namespace fuzz
