#include "sectrix/foundation/json_tag.h"
#include "sectrix/interfaces/dom_writer_json.h"
#include "support/section_text.h"
#include "support/small_stack.h"
#include "support/test_data.h"

#include <cmath>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <set>
#include <thread>

using namespace qel;
using namespace qel::Sectrix;
using namespace sectrix_tests;

namespace {

/// What `SetText` has to give for the set of a case, once it is cut where the case says how.
std::string ExpectedText(Dom const& testCase) {
    std::ostringstream text;
    text << std::hexfloat;
    std::set<std::string> names;
    for (auto const* list : {"positions", "added"})
        for (std::uint64_t i = 0; i < testCase[list].size(); ++i) {
            auto const& position = testCase[list][i];
            auto const name = *names.insert(position[2].asString("")).first;
            text << position[0].asDouble(0) << ' ' << position[1].asDouble(0) << ' ' << name << '\n';
        }
    names.erase("");
    text << names.size() << " names\n";
    for (std::uint64_t i = 0; i < testCase["sections"].size(); ++i)
        text << testCase["sections"][i].asString("?") << '\n';
    for (auto const& [name, value] : testCase["parameters"].objects())
        text << name << '=' << value.asDouble(0.0) << '\n';
    return text.str();
}

void RunCase(Dom const& testCase) {
    CrossSections set(testCase["scale"].asDouble(1.0));
    for (std::int64_t read = 0; read < testCase["reads"].asInt(1); ++read) {
        std::istringstream text(testCase["text"].asString(DomWriterJson::ToString(testCase["document"])));
        set.From(text);
    }
    if (testCase.has("convex")) {
        EXPECT_EQ(set.Positions().Count(), static_cast<int>(testCase["positions"].size()));
        for (std::size_t i = 0; i < set.Items().size(); ++i)
            EXPECT_EQ(LoopsText(set.GetItems()[i].GetConvexLoops()), testCase["convex"][i].asString("?"));
    }
    EXPECT_EQ(SetText(set), ExpectedText(testCase));
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
    auto const text = DomWriterJson::ToString(
        CaseDocument("sections/reading.json", "a deck with names, a closed loop, a hole and a parameter"));
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

TEST(Documents, AFolderReadsAsNothing) {
    std::ifstream folder("/");
    CrossSections set;
    set.From(folder);
    EXPECT_EQ(SetText(set), SetText(CrossSections()));
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
    std::istringstream stream(std::string(3000000, ' ') + DomWriterJson::ToString(written));
    CrossSections copy;
    copy.From(stream);
    EXPECT_EQ(SetText(copy), SetText(set));
    EXPECT_FALSE(written.has("Params"));
}

TEST(Documents, ParametersGoOutAsAListAndTheBoxFollowsTheScale) {
    auto const document =
        CaseDocument("sections/reading.json", "a deck with names, a closed loop, a hole and a parameter");
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
    std::pair<Dom, char const*> const rows[] = {
        {Dom(), "5 5.5 1 f"},
        {Dom(7), "7 7 1 f"},
        {Dom(std::int64_t{-5000000000}), "-5000000000 -5e+09 1 f"},
        {Dom(-2.9), "-2 -2.9 1 f"},
        {Dom(1e300), "9223372036854775807 1e+300 1 f"},
        {Dom(-1e300), "-9223372036854775808 -1e+300 1 f"},
        {Dom(std::numeric_limits<double>::quiet_NaN()), "5 nan 1 f"},
        {Dom(false), "5 5.5 0 f"},
        {Dom("1"), "5 5.5 1 1"},
        {Dom().toArray(), "5 5.5 1 f"},
        {Dom().toObject(), "5 5.5 1 f"},
    };
    for (auto const& [original, values] : rows) {
        Dom const node(original);
        std::ostringstream text;
        text << node.asInt(5) << ' ' << node.asDouble(5.5) << ' ' << node.asBool(true) << ' ' << node.asString("f");
        EXPECT_EQ(text.str(), values);
        EXPECT_EQ(node.size() + node["k"].size() + node[3].size(), 0u) << values;
        EXPECT_FALSE(node.has("k")) << values;
    }
}

TEST(DomNode, BuildsAndMovesWithinItself) {
    Dom dom;
    dom["a"].append()["b"] = 1;
    dom[std::string("a")].append() = "x";
    EXPECT_EQ(DomWriterJson::ToString(dom), "{\n  \"a\": [\n    {\"b\": 1},\n    \"x\"\n  ]\n}");
    EXPECT_TRUE(dom.size() == 0 && !dom[0].isArray()); // members are no elements
    Dom const copy(dom);
    dom = dom["a"];
    EXPECT_EQ(DomWriterJson::ToString(dom), DomWriterJson::ToString(copy["a"]));
    auto& child = dom.append();
    child = copy;
    dom = std::move(child);
    EXPECT_EQ(DomWriterJson::ToString(dom), DomWriterJson::ToString(copy));
    EXPECT_TRUE(dom.toArray().isArray() && dom.size() == 0);
    dom.append() = HUGE_VAL; // JSON has no form for it
    EXPECT_EQ(DomWriterJson::ToString(dom), "[null]");
}

TEST(DomNode, OutlivesTheTreeThatItWasReadIn) {
    std::string const branch = R"([{}, [1.5, [[]]], {"a": ["a text that is too long to stand within", null]}])";
    std::string text;
    for (int i = 0; i < 300; ++i)
        text += (i > 0 ? ", \"" : "{\"") + std::to_string(i) + "\": {\"k\": " + branch + '}';
    Dom tree, alone;
    ASSERT_TRUE(DomReaderJson::FromString(tree, (text + '}').c_str(), nullptr));
    ASSERT_TRUE(DomReaderJson::FromString(alone, branch.c_str(), nullptr));
    std::vector<Dom> kept;
    for (int i = 0; i < 300; i += 2)
        kept.push_back(std::move(tree[std::to_string(i)]["k"]));
    std::thread other([rest = std::move(tree)]() mutable { rest = Dom(); });
    alone.append()["b"] = Dom(alone);
    for (auto& node : kept) {
        Dom const copy(node);
        node.append()["b"] = copy; // the array was as large as its text
        EXPECT_EQ(DomWriterJson::ToString(node), DomWriterJson::ToString(alone));
        node = Dom();
    }
    other.join();
}

TEST(DomNode, TakesAnyIndexThatConvertsByItself) {
    enum Plain { kSecond = 1 };
    struct Place {
        operator unsigned char() const { return 1; }
    };
    Dom dom;
    for (int i = 0; i < 2; ++i)
        dom.append() = Dom(i);
    Dom const& read = dom;
    for (auto const* node : {&dom[0], &read[0], &read[0u], &dom[std::integral_constant<int, 0>()], &dom[false]})
        EXPECT_EQ(node->asInt(7), 0);
    for (auto const* node : {&dom[1], &dom[kSecond], &read[kSecond], &read[Place()], &read[1.5]})
        EXPECT_EQ(node->asInt(7), 1);
    for (auto const* node : {&dom[2], &read[-1], &read[~std::uint64_t{0}]})
        EXPECT_EQ(node->asInt(7), 7);
    dom["k"] = Dom(3);
    EXPECT_EQ(read["k"].asInt(7) + read[std::string("k").c_str()].asInt(7) + dom[std::string("k")].asInt(7), 9);
}

void BuildCopyAndReadDeepTrees() {
    Dom deep;
    Dom* node = &deep;
    for (int depth = 0; depth < 300000; ++depth)
        node = depth % 3 ? &node->append() : &(*node)["key"];
    Dom const copy(deep);
    deep = copy["key"];
    EXPECT_EQ(copy.objects().size() + deep.size(), 2u);
    EXPECT_GT(DomWriterJson::ToString(deep).size(), 300000u);
    for (char const* opening : {"[", "{\"k\":", "[[],"}) {
        std::string text;
        for (int depth = 0; depth < 300000; ++depth)
            text += opening;
        EXPECT_FALSE(DomReaderJson::FromString(deep, text.c_str(), nullptr));
        EXPECT_EQ(DomWriterJson::ToString(deep), "null");
    }
}

TEST(DomNode, AnyDepthNeedsLittleStack) {
    fuzz::OnSmallStacks(1, [](std::size_t) { BuildCopyAndReadDeepTrees(); });
}

TEST(DomReader, TakesOrRefuses) {
    std::pair<char const*, char const*> const taken[] = {
        {"9223372036854775807", "9223372036854775807"},
        {"9223372036854775808", "9223372036854775808.0"},
        {"-9223372036854775808", "-9223372036854775808"},
        {"-0.0", "-0.0"},
        {"0.1", "0.1"},
        {"null", "null"},
        {"\"\\u0041\\n\"", "\"A\\u000a\""},
        {"\"\\ud83d\\ude00\"", "\"\xF0\x9F\x98\x80\""},
    };
    Dom dom;
    for (auto const& [text, written] : taken) {
        EXPECT_TRUE(DomReaderJson::FromString(dom, text, nullptr)) << text;
        EXPECT_EQ(DomWriterJson::ToString(dom), written);
    }
    for (auto const* text :
         {"18446744073709551616", "1e400", "\"\xC3\x28\"", "\"\xE4\"", "\"\xED\xA0\xBD\xED\xB8\x80\"", "\"\x01\"",
          "[1,]", "[1] 2", "// note\n1", "\xEF\xBB\xBF"}) {
        dom = Dom(1);
        EXPECT_FALSE(DomReaderJson::FromString(dom, text, nullptr)) << text;
        EXPECT_EQ(DomWriterJson::ToString(dom), "null") << text;
    }
}

TEST(JsonTags, AreThePublishedKeysInBothForms) {
    struct Key {
        char const* m_published;
        char const* m_narrow;
        wchar_t const* m_wide;
    } const keys[] = {
#define KEY_AS(stem, value) {value, JsonTag::k##stem##Tag, JsonTag::k##stem##WTag},
#define KEY(stem) KEY_AS(stem, #stem)
#include "data/keys.inc"
    };
    EXPECT_EQ(std::size(keys), 169u);
    for (auto const& key : keys) {
        EXPECT_STREQ(key.m_narrow, key.m_published);
        EXPECT_EQ(std::wstring(key.m_published, key.m_published + std::strlen(key.m_published)), key.m_wide);
    }
#ifdef SECTRIX_JSON_KEYS
    ADD_FAILURE() << "a macro of the header reaches those who include it";
#endif
}

} // namespace
