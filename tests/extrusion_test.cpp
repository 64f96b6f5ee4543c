#include "sectrix/extrusion/extrusion.h"
#include "sectrix/interfaces/dom_writer_json.h"
#include "support/test_data.h"

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

static std::ostream& operator<<(std::ostream& text, Profile const& profile) {
    text << '[';
    for (auto const& position : profile.Positions())
        text << '(' << position << ')';
    return text << ']';
}

static std::ostream& operator<<(std::ostream& text, ExtrudedSection const& section) {
    text << (section.Exterior() ? '+' : '-');
    for (auto const& profile : section.Profiles())
        text << ' ' << profile;
    return text;
}

static std::ostream& operator<<(std::ostream& text, Extrusion const& extrusion) {
    text << extrusion.AssemblyPartName() << ':';
    for (auto const& section : extrusion.Sections())
        text << ' ' << section;
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
                  : kind == "profile"  ? PrintToString(Read<Profile>(documents))
                  : kind == "section"  ? PrintToString(Read<ExtrudedSection>(documents))
                                       : PrintToString(Read<Extrusion>(documents)),
                  cases[i]["text"].asString("?"));
    }
}

/// Copies and moves an object that reads as `emptied` once its lists have been taken over.
template <class T>
static void CheckValue(T object, std::string const& emptied) {
    auto const full = PrintToString(object);
    auto& self = object;
    object = self;
    object = std::move(self);
    T moved(std::move(object));
    EXPECT_EQ(PrintToString(moved) + PrintToString(object), full + emptied);
    object = moved;
    EXPECT_EQ(PrintToString(moved) + PrintToString(object), full + full);
    T other;
    other = std::move(object);
    EXPECT_EQ(PrintToString(other) + PrintToString(object), full + emptied);
}

TEST(Extrusion, IsAValueWhoseListsTakeTheRoomTheyNeed) {
    auto const extrusion = Read<Extrusion>(sectrix_tests::FileDom("extrusion_value.json"));
    EXPECT_EQ(extrusion.Sections().capacity(), 3u);
    Extrusion longer = extrusion;
    Dom one;
    one["Sections"].append() = Dom(5);
    longer.from(one);
    EXPECT_EQ(longer.Sections().capacity(), 4u);
    auto const& section = extrusion.Sections()[1];
    auto const& profile = section.Profiles()[0];
    CheckValue(extrusion, ":");
    CheckValue(section, "-");
    CheckValue(profile, "[]");
    Dom points;
    for (int i = 0; i < 2; ++i)
        profile.Positions()[0].to(points);
    EXPECT_EQ(DomWriterJson::ToString(points), "[1.0, 2.0, 3.0, 1.0, 2.0, 3.0]");
}
