#include "sectrix_tools/checks/codes.h"
#include "sectrix_tools/checks/document_check.h"
#include "sectrix_tools/checks/extrusion_check.h"
#include "sectrix_tools/checks/text_check.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <sstream>

using namespace qel;
using namespace qel::SectrixTools;
using namespace sectrix_tests;

namespace {

/// As the data has it: place, severity, message, code, pointer and place in the set.
std::string Text(Finding const& finding) {
    auto text = std::to_string(finding.m_line) + ':' + std::to_string(finding.m_column) + ": " +
                SeverityName(finding.m_severity) + ": " + finding.m_message + " [" + finding.m_code + ']';
    if (!finding.m_pointer.empty())
        text += " at " + finding.m_pointer;
    if (finding.m_section >= 0)
        text += " in " + std::to_string(finding.m_section);
    for (int const place : {finding.m_loop, finding.m_vertex})
        if (place >= 0)
            text += '.' + std::to_string(place);
    return text;
}

std::string Text(Findings const& findings) {
    std::string text;
    for (auto const& finding : findings)
        text += Text(finding) + '\n';
    return text;
}

std::string Lines(Dom const& list) {
    std::string text;
    for (std::uint64_t i = 0; i < list.size(); ++i)
        text += list[i].asString({}) + '\n';
    return text;
}

/// The text of a case: `text`, `bytes` in hexadecimal digits, lists in each other, `nested` deep, or a section of
/// `petals` that meet in one point.
std::string CaseText(Dom const& test) {
    if (test.has("nested")) {
        auto const depth = static_cast<std::size_t>(test["nested"].asInt(0));
        return std::string(depth, '[') + std::string(depth, ']');
    }
    auto text = test["text"].asString({});
    if (test.has("petals")) {
        std::string points = "[0, 0]", loop;
        for (int i = 0; i < static_cast<int>(test["petals"].asInt(0)); ++i) {
            for (int const x : {2 * i, 2 * i + 1})
                points += ", [" + std::to_string(200 - x) + ", " + std::to_string(x) + "]";
            loop += (i > 0 ? ", 0, " : "0, ") + std::to_string(2 * i + 1) + ", " + std::to_string(2 * i + 2);
        }
        text = "{ \"Outlines\": [[" + points + "], [[[[" + loop + "], true]]]] }";
    }
    auto const digits = test["bytes"].asString({});
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        text += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    return text;
}

/// Holds a check against the cases of a file.
void TryCases(std::string const& file, Findings (*check)(std::string_view)) {
    auto const cases = FileDom(file);
    for (std::uint64_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(Text(check(CaseText(cases[i]))), Lines(cases[i]["findings"])) << cases[i]["case"].asString({});
}

TEST(CheckDocument, SaysWhatIsWrong) {
    TryCases("checks/document.json", CheckDocument);
}

TEST(CheckExtrusion, SaysWhatIsWrong) {
    TryCases("checks/extrusion.json", CheckExtrusion);
}

/// Of petals, which give many findings, those with the code that the case is called after.
TEST(CheckText, SaysWhatIsWrong) {
    auto const cases = FileDom("checks/text.json");
    for (std::uint64_t i = 0; i < cases.size(); ++i) {
        auto const name = cases[i]["case"].asString({});
        auto findings = CheckText(CaseText(cases[i]), cases[i]["scale"].asDouble(1));
        findings.erase(
            std::remove_if(findings.begin(), findings.end(),
                           [&](auto const& found) { return cases[i].has("petals") && found.m_code != name; }),
            findings.end());
        EXPECT_EQ(Text(findings), Lines(cases[i]["findings"])) << name;
    }
}

char const* Words(Effect effect) {
    char const* const words[] = {"keeps it",           "alters it",         "drops it",
                                 "drops the position", "drops the section", "drops all"};
    return words[static_cast<int>(effect)];
}

/// The rows of the tables of codes in docs/checks.md, each up to what to do.
std::map<std::string, std::string> PageRows() {
    std::istringstream page(FileText("../../docs/checks.md"));
    std::map<std::string, std::string> rows;
    for (std::string line; std::getline(page, line);)
        if (line.rfind("| `", 0) == 0) {
            auto const row = line.substr(0, line.rfind(" | "));
            EXPECT_TRUE(rows.emplace(line.substr(3, line.find('`', 3) - 3), row).second) << line;
        }
    return rows;
}

TEST(CheckCodes, StandOnThePageEachWithTheDocumentThatIsTested) {
    auto rows = PageRows();
    std::map<std::string, Dom> cases;
    for (auto const& file : std::filesystem::directory_iterator(SECTRIX_TEST_DATA "/checks")) {
        auto const list = FileDom("checks/" + file.path().filename().string());
        for (std::uint64_t i = 0; i < list.size(); ++i)
            cases[list[i]["case"].asString({})] = list[i];
    }
    for (auto const& [name, severity, effect] : kCodes) {
        auto const& test = cases[name];
        EXPECT_NE(Lines(test["findings"]).find(std::string(" [") + name + ']'), std::string::npos) << name;
        auto const shown = test["shown"].asString('`' + CaseText(test) + '`');
        EXPECT_EQ(rows[name], std::string("| `") + name + "` | " + SeverityName(severity) + " | " + Words(effect) +
                                  " | " + shown);
        rows.erase(name);
        EXPECT_TRUE(effect == Effect::Keeps || severity == Severity::Error) << name;
    }
    EXPECT_TRUE(rows.empty()) << rows.begin()->second;
}

TEST(CheckDocument, FindsNoErrorInTheSamples) {
    for (auto const& file : std::filesystem::directory_iterator(SECTRIX_TEST_DATA "/../../examples/data")) {
        auto const name = file.path().filename().string();
        if (file.path().extension() != ".json")
            continue;
        auto const text = FileText("../../examples/data/" + name);
        bool const isSection = text.find("\"Outlines\"") != std::string::npos;
        auto const findings = isSection ? CheckDocument(text) : CheckExtrusion(text);
        EXPECT_EQ(HasErrors(findings), name == "bad-elements.json") << name << '\n' << Text(findings);
    }
}

TEST(CheckDocument, FindsWhereEachTextEndsTooSoon) {
    auto const whole = FileText("../../examples/data/box-girder-single-cell.json");
    auto const end = whole.find_last_of('}');
    for (std::size_t length = 0; length <= end; ++length) {
        auto const findings = CheckDocument(std::string_view(whole).substr(0, length));
        ASSERT_EQ(findings.size(), 1u) << length;
        auto const last = std::string_view(whole).substr(0, length);
        EXPECT_EQ(findings[0].m_line, 1 + std::count(last.begin(), last.end(), '\n')) << length;
        auto const line = last.substr(last.find_last_of('\n') + 1);
        // A word that is cut off is named where it begins.
        EXPECT_LE(findings[0].m_column, static_cast<int>(line.size()) + 1) << length;
        EXPECT_GE(findings[0].m_column, static_cast<int>(line.size()) - 4) << length;
    }
}

TEST(CheckDocument, TakesAHundredThousandFindingsInItsStride) {
    int const count = 40'000; // each is altered, unused, and every second one repeats a name
    for (bool const isOneLine : {false, true}) {
        std::string const space = isOneLine ? std::string(200, ' ') : "\n";
        std::string text = "{ \"Outlines\": [[[0, 0]";
        for (int i = 1; i < count; ++i)
            text += "," + space + "{ \"name\": \"" + std::to_string(i / 2) + "\", \"coordinates\": [\"1\", 0] }";
        text += "], [[[[0, 1, 2], true]]]] }";
        auto const start = std::chrono::steady_clock::now();
        auto const findings = CheckDocument(text);
        std::chrono::duration<double> const seconds = std::chrono::steady_clock::now() - start;
        EXPECT_EQ(findings.size(), std::size_t(count - 1 + (count / 2 - 1) + count - 3));
        EXPECT_EQ(findings.back().m_line, isOneLine ? 1 : count);
        EXPECT_LT(seconds.count(), 10.0); // the square of the number, or of the line's length, would take minutes
    }
}

} // namespace
