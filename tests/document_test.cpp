#include "section_text.h"
#include "sectrix/foundation/json_tag.h"
#include "sectrix/interfaces/dom_writer_json.h"

#include <cmath>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <set>

using namespace qel;
using namespace qel::Sectrix;
using namespace sectrix_tests;

namespace {

/// The positions of a set beside those that a case expects, as text.
std::string PositionsText(Dom const& positions) {
    std::string text;
    for (std::uint64_t i = 0; i < positions.size(); ++i)
        text += DomWriterJson::ToString(Dom(positions[i][0].asDouble(0))) + ' ' +
                DomWriterJson::ToString(Dom(positions[i][1].asDouble(0))) + ' ' + positions[i][2].asString("") +
                '\n';
    return text;
}

std::string PositionsText(CSPositions const& pool, int from, int to) {
    Dom list;
    bool found = false;
    for (int i = from; i < to; ++i) {
        auto const& position = pool.GetPosition(static_cast<std::uint64_t>(i), found);
        auto& entry = list.append();
        entry.append() = position.Position()[0];
        entry.append() = position.Position()[1];
        entry.append() = position.Name();
    }
    return PositionsText(list);
}

void ExpectSections(Dom const& expected, CrossSections& set, std::string (*text)(CrossSection&)) {
    ASSERT_EQ(set.Items().size(), expected.size());
    for (std::size_t i = 0; i < set.Items().size(); ++i)
        EXPECT_EQ(text(set.GetItems()[i]), expected[i].asString("?"));
}

void RunCase(Dom const& testCase) {
    CrossSections set(testCase["scale"].asDouble(1.0));
    for (std::int64_t read = 0; read < testCase["reads"].asInt(1); ++read) {
        std::istringstream text(testCase["text"].asString(DomWriterJson::ToString(testCase["document"])));
        set.From(text);
    }
    int const count = set.Positions().Count();
    EXPECT_EQ(PositionsText(set.Positions(), 0, count), PositionsText(testCase["positions"]));
    std::set<std::string> names;
    for (std::uint64_t i = 0; i < testCase["positions"].size(); ++i)
        names.insert(testCase["positions"][i][2].asString(""));
    names.erase("");
    EXPECT_EQ(set.Positions().NamedCount(), static_cast<int>(names.size()));
    ExpectSections(testCase["sections"], set, [](CrossSection& section) { return SectionText(section); });
    std::map<std::string, double> parameters;
    for (auto const& [name, value] : testCase["parameters"].objects())
        parameters[name] = value.asDouble(0.0);
    EXPECT_EQ(set.Parameters(), parameters);
    if (!testCase.has("convex"))
        return;
    ExpectSections(testCase["convex"], set,
                   [](CrossSection& section) { return LoopsText(section.GetConvexLoops()); });
    EXPECT_EQ(PositionsText(set.Positions(), count, set.Positions().Count()), PositionsText(testCase["added"]));
}

TEST(Documents, CasesInData) {
    std::uint64_t count = 0;
    for (auto const& file : std::filesystem::directory_iterator(SECTRIX_TEST_DATA "/sections")) {
        auto const name = file.path().filename().string();
        auto const cases = FileDom("sections/" + name);
        count += cases.size();
        for (std::uint64_t i = 0; i < cases.size(); ++i) {
            SCOPED_TRACE(name + (": " + cases[i]["case"].asString("")));
            RunCase(cases[i]);
        }
    }
    EXPECT_GT(count, 25u);
}

TEST(Documents, EveryCutOffTextReadsAsNothing) {
    auto const text = DomWriterJson::ToString(FileDom("sections/reading.json")[0]["document"]);
    for (std::size_t length = 0; length < text.size(); ++length) {
        Dom dom("before");
        std::string error;
        EXPECT_FALSE(DomReaderJson::FromString(dom, text.substr(0, length).c_str(), &error)) << length;
        EXPECT_FALSE(error.empty());
        EXPECT_EQ(DomWriterJson::ToString(dom), "null");
        CrossSections set;
        std::istringstream stream(text.substr(0, length));
        set.From(stream);
        EXPECT_EQ(SetText(set), SetText(CrossSections())) << length;
    }
}

TEST(Documents, WhatIsWrittenReadsBackBitForBit) {
    std::mt19937_64 random(7);
    CSPositions pool;
    while (pool.Count() < 3000) {
        std::uint64_t const bits[] = {random(), random()};
        Vec<2, double> point;
        std::memcpy(&point, bits, sizeof point);
        if (std::isfinite(point[0]) && std::isfinite(point[1]))
            pool.AddPosition(random() % 4 ? "" : "name \"\\\x01\xC3\xA9" + std::to_string(random() % 9), point);
    }
    pool.AddPosition({-0.0, 5e-324});
    CrossSections set(pool, true);
    auto& hole = set.GetItems()[0].AddInteriorLoop();
    for (int index : {5, 9, 2, 7})
        hole.AddVertex(index, true);

    Dom written;
    set.To(written);
    set.To(written); // writing again gives the document once
    Dom parsed;
    ASSERT_TRUE(DomReaderJson::FromString(parsed, DomWriterJson::ToString(written).c_str(), nullptr));
    CrossSections copy;
    copy.From(parsed);
    EXPECT_EQ(SetText(copy), SetText(set));
    EXPECT_FALSE(written.has("Params"));
}

TEST(Documents, ParametersGoOutAsAListAndTheBoxFollowsTheScale) {
    auto const document = FileDom("sections/reading.json")[0]["document"];
    CrossSections set(0.5);
    set.From(document);
    EXPECT_EQ(set.BBox().m_max[0], 10.0);
    Dom written;
    set.To(written);
    EXPECT_EQ(DomWriterJson::ToString(written["Params"]), "[\n  {\"Width\": 20.0}\n]");
    // The cached box is renewed by a read with a scale, and by no other.
    CrossSections plain;
    plain.From(document);
    EXPECT_EQ(plain.BBox().m_max[0], 20.0);
    Dom more;
    DomReaderJson::FromString(more, R"({"Outlines": [[[90, 0]], []]})", nullptr);
    plain.From(more);
    EXPECT_EQ(plain.BBox().m_max[0], 20.0);
    set.From(more);
    EXPECT_EQ(set.BBox().m_max[0], 45.0);
}

TEST(DomNode, ConvertsOnlyWhatFits) {
    double const huge = 1e300, nan = std::numeric_limits<double>::quiet_NaN();
    struct Row {
        Dom node;
        std::int64_t asInt;
        double asDouble;
        bool asBool;
        std::string asString;
    } const rows[] = {
        {Dom(), 5, 5.5, true, "f"},
        {Dom(7), 7, 7.0, true, "f"},
        {Dom(-2.9), -2, -2.9, true, "f"},
        {Dom(huge), INT64_MAX, huge, true, "f"},
        {Dom(-huge), INT64_MIN, -huge, true, "f"},
        {Dom(nan), 5, nan, true, "f"},
        {Dom(false), 5, 5.5, false, "f"},
        {Dom("1"), 5, 5.5, true, "1"},
        {Dom().toArray(), 5, 5.5, true, "f"},
        {Dom().toObject(), 5, 5.5, true, "f"},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(DomWriterJson::ToString(row.node));
        EXPECT_EQ(row.node.asInt(5), row.asInt);
        auto const value = row.node.asDouble(5.5);
        EXPECT_TRUE(value == row.asDouble || (std::isnan(value) && std::isnan(row.asDouble)));
        EXPECT_EQ(row.node.asBool(true), row.asBool);
        EXPECT_EQ(row.node.asString("f"), row.asString);
        EXPECT_EQ(row.node.size() + row.node["k"].size() + row.node[3].size(), 0u);
        EXPECT_FALSE(row.node.has("k"));
    }
}

TEST(DomNode, BuildsAndMovesWithinItself) {
    Dom dom;
    dom["a"].append()["b"] = 1;
    dom[std::string("a")].append() = "x";
    EXPECT_EQ(DomWriterJson::ToString(dom), "{\n  \"a\": [\n    {\"b\": 1},\n    \"x\"\n  ]\n}");
    EXPECT_TRUE(dom[0].isArray());
    Dom const copy(dom);
    dom = dom["a"];
    EXPECT_EQ(DomWriterJson::ToString(dom), DomWriterJson::ToString(copy["a"]));
    auto& child = dom.append();
    child = copy;
    dom = std::move(child);
    EXPECT_EQ(DomWriterJson::ToString(dom), DomWriterJson::ToString(copy));
    EXPECT_TRUE(dom.toArray().isArray() && dom.size() == 0);
}

TEST(DomNode, AnyDepthNeedsNoStack) {
    Dom deep;
    Dom* node = &deep;
    for (int depth = 0; depth < 300000; ++depth)
        node = depth % 3 ? &node->append() : &(*node)["key"];
    Dom const copy(deep);
    deep = copy["key"];
    EXPECT_EQ(copy.size() + deep.size(), 2u);
    EXPECT_GT(DomWriterJson::ToString(deep).size(), 300000u);
    for (char const* opening : {"[", "{\"k\":", "[[],"}) {
        std::string text;
        for (int depth = 0; depth < 300000; ++depth)
            text += opening;
        EXPECT_FALSE(DomReaderJson::FromString(deep, text.c_str(), nullptr));
        EXPECT_EQ(DomWriterJson::ToString(deep), "null");
    }
}

TEST(DomReader, TakesOrRefuses) {
    struct Row {
        char const* text;
        char const* written; // null where the text is refused
    } const rows[] = {
        {"9223372036854775807", "9223372036854775807"},
        {"9223372036854775808", "9223372036854775808.0"},
        {"18446744073709551616", nullptr},
        {"-9223372036854775808", "-9223372036854775808"},
        {"1e400", nullptr},
        {"-0.0", "-0.0"},
        {"0.1", "0.1"},
        {"null", "null"},
        {"\"\\u0041\\n\"", "\"A\\u000a\""},
        {"\"\xC3\x28\"", nullptr},
        {"\"\x01\"", nullptr},
        {"[1,]", nullptr},
        {"[1] 2", nullptr},
        {"// note\n1", nullptr},
        {"\xEF\xBB\xBF", nullptr},
    };
    for (auto const& row : rows) {
        Dom dom;
        EXPECT_EQ(DomReaderJson::FromString(dom, row.text, nullptr), row.written != nullptr) << row.text;
        EXPECT_EQ(DomWriterJson::ToString(dom), row.written ? row.written : "null");
    }
}

TEST(JsonTags, AreThePublishedKeysInBothForms) {
    std::string listed, wide;
#define SECTRIX_LIST_AS(stem, value)                                                                               \
    listed += std::string(#stem " ") + JsonTag::k##stem##Tag + "\n";                                               \
    for (wchar_t const* unit = JsonTag::k##stem##WTag; *unit; ++unit)                                              \
        wide += static_cast<char>(*unit);                                                                          \
    EXPECT_EQ(std::exchange(wide, ""), JsonTag::k##stem##Tag);
#define SECTRIX_LIST(stem) SECTRIX_LIST_AS(stem, #stem)
    SECTRIX_JSON_KEYS(SECTRIX_LIST, SECTRIX_LIST_AS)
    EXPECT_EQ(listed, FileText("keys.txt"));
    JsonTag tags;
    EXPECT_EQ(&(tags = JsonTag()), &tags);
}

} // namespace
