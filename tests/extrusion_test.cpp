#include "section_text.h"
#include "sectrix/extrusion/extrusion.h"
#include "sectrix/interfaces/dom_writer_json.h"

#include <gtest/gtest.h>

using namespace qel;
using namespace qel::Sectrix;
using testing::PrintToString;

namespace qel::Sectrix {

static std::ostream& operator<<(std::ostream& text, Position const& position) {
    return text << position.X() << ' ' << position.Y() << ' ' << position.Z()
                << (position.IsValid() ? "" : ", invalid");
}

static std::ostream& operator<<(std::ostream& text, EndPlane const& plane) {
    return text << (plane.IsStart() ? "start at " : "end at ") << plane.Origin() << " along " << plane.Normal()
                << " skew " << plane.Skew();
}

static std::ostream& operator<<(std::ostream& text, Extrusion const& extrusion) {
    text << extrusion.AssemblyPartName() << ':';
    for (auto const& section : extrusion.Sections()) {
        text << (section.Exterior() ? " +" : " -");
        for (auto const& profile : section.Profiles()) {
            text << " [";
            for (auto const& position : profile.Positions())
                text << '(' << position << ')';
            text << ']';
        }
    }
    return text;
}

} // namespace qel::Sectrix

/// Reads documents one after the other into one object.
template <class T>
static T Read(Dom const& documents) {
    T object;
    for (std::uint64_t i = 0; i < documents.size(); ++i)
        EXPECT_TRUE(object.from(documents[i]));
    return object;
}

TEST(Extrusion, CasesInData) {
    auto const cases = sectrix_tests::FileDom("extrusion.json");
    for (std::uint64_t i = 0; i < cases.size(); ++i) {
        auto const& [kind, documents] = cases[i].objects()[0];
        EXPECT_EQ(kind == "position"   ? PrintToString(Read<Position>(documents))
                  : kind == "endPlane" ? PrintToString(Read<EndPlane>(documents))
                                       : PrintToString(Read<Extrusion>(documents)),
                  cases[i]["text"].asString("?"));
    }
}

TEST(Extrusion, ListsTakeTheRoomTheyNeedAndMovesTakeThem) {
    auto source = Read<Extrusion>(sectrix_tests::FileDom("extrusion.json")[11]["extrusion"]);
    EXPECT_EQ(source.Sections().capacity(), 3u);
    auto const text = PrintToString(source);
    auto& self = source;
    source = self;
    source = std::move(self);
    Extrusion copy = source;
    EXPECT_EQ(PrintToString(source) + PrintToString(copy), text + text);
    copy = std::move(source);
    EXPECT_EQ(PrintToString(source) + PrintToString(copy), ':' + text);
    Dom points;
    for (int i = 0; i < 2; ++i)
        copy.Sections()[0].Profiles()[0].Positions()[0].to(points);
    EXPECT_EQ(DomWriterJson::ToString(points), "[1.0, 2.0, 3.0, 1.0, 2.0, 3.0]");
    auto section = copy.Sections()[1], other = copy.Sections()[0];
    auto profile = other.Profiles()[0];
    EXPECT_TRUE(Profile(std::move(profile)).Positions().size() == 1 && profile.Positions().empty());
    other = std::move(section);
    EXPECT_FALSE(section.Exterior() || other.Exterior());
}
