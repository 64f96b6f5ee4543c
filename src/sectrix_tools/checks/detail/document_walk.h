#pragma once

#include "sectrix/interfaces/dom.h"
#include "sectrix_tools/checks/finding.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// \file
/// A walk through a document and its text in step. Internal to the checks.

namespace qel::SectrixTools {

/// Goes through the tree of a document and tells, of each node, where it stands in the text; and takes findings.
///
/// The tree is the one that the reader of documents makes, so what is checked is what is read. A node has no place
/// of its own: the walk stands on the text of one value at a time, and passes over it together with its node. Only
/// known structure is entered, so the stack does not grow with the nesting of the text.
class DocumentWalk {
public:
    /// A step from a node to a child: the key of a member, or the place of an element.
    struct Step {
        std::string const* m_key = nullptr;
        std::uint64_t m_place = 0;
    };

    /// Parses. What keeps the text from being read is reported, and the root then is a fresh node.
    explicit DocumentWalk(std::string_view text);

    /// True when the text was read.
    bool IsRead() const { return m_isRead; }
    Dom const& Root() const { return m_root; }

    /// Calls `visit(which, value)` for each member that is read: the last one of each of `keys`, whose place there
    /// is `which`. Any other member is reported. The walk stands on `node`, an object, and then behind it.
    template <std::size_t N, class Visit>
    void Members(Dom const& node, std::array<char const*, N> const& keys, Visit visit) {
        std::array<Dom const*, N> read;
        for (std::size_t i = 0; i < N; ++i)
            read[i] = &node[keys[i]];
        AllMembers(node, [&](Dom const& child) {
            auto const& key = *m_path.back().m_key;
            for (std::size_t i = 0; i < N; ++i)
                if (key == keys[i])
                    return read[i] == &child ? visit(i, child) : ReportRepeatedKey();
            ReportUnknownKey({keys.begin(), keys.end()});
        });
    }

    /// Calls `visit(value)` for each member of an object, equal keys included. The walk stands on `node`, and then
    /// behind it.
    template <class Visit>
    void AllMembers(Dom const& node, Visit visit) {
        auto const& members = node.objects();
        Enter();
        for (auto const& [key, value] : members) {
            m_path.push_back({&key, 0});
            PassKey();
            VisitChild(value, visit);
        }
        Leave(members.empty());
    }

    /// Calls `visit(place, value)` for each element of an array. The walk stands on `node`, and then behind it.
    template <class Visit>
    void Elements(Dom const& node, Visit visit) {
        auto const count = node.size();
        Enter();
        for (std::uint64_t place = 0; place < count; ++place) {
            m_path.push_back({nullptr, place});
            VisitChild(node[place], [&](Dom const& element) { visit(place, element); });
        }
        Leave(count == 0);
    }

    // Kinds of the value that the walk stands on; what is of another kind is reported.

    /// True for an array.
    bool CheckList(Dom const& node, char const* what);
    void CheckNumber(Dom const& node, char const* what);
    /// True for a string.
    bool CheckText(Dom const& node, char const* what);
    /// \param readAs  what reading makes of another kind.
    void CheckBoolean(Dom const& node, char const* what, char const* readAs);
    /// The root: true for an object.
    bool CheckObject(Dom const& node);

    /// Whether the value that the walk stands on is a number or a string. Asked of the text, since a tree that a
    /// host supplies need not tell.
    bool IsNumber() const { return m_text[m_at] == '-' || (m_text[m_at] >= '0' && m_text[m_at] <= '9'); }
    bool IsString() const { return m_text[m_at] == '"'; }

    /// Where the walk stands: an offset in the text.
    std::size_t Place() const { return m_at; }
    /// The step by which the walk has come to where it stands; not at the root.
    Step const& LastStep() const { return m_path.back(); }
    /// The JSON Pointer of the value that the walk stands on.
    std::string Pointer() const;
    /// The value that the walk stands on in words: its text where that is short, else its kind.
    std::string Words(Dom const& node) const;

    /// Adds a finding at the value that the walk stands on. `code` is one of `kCodes`. The result is good until the
    /// next one is added.
    Finding& Report(char const* code, std::string message);
    /// Adds a finding at the key of that value.
    Finding& ReportKey(char const* code, std::string message);
    /// Says that the member that the walk stands on is not read, as it is not the last one of its key.
    void ReportRepeatedKey();
    /// Adds a finding at any place of the text.
    Finding& ReportAt(std::size_t place, std::string pointer, char const* code, std::string message);
    /// The pointer to a child of what `pointer` points to.
    static std::string Extended(std::string pointer, Step const& step);

    /// The findings so far, to change what is not yet known when they are added.
    Findings& Reported() { return m_findings; }

    /// All findings by their places, each with its line and column; the walk is at its end.
    Findings TakeFindings();

    /// The line and column of a place; cheap when the place is not before that of the last call.
    std::pair<int, int> LineAndColumn(std::size_t place);

private:
    void Parse(std::string_view whole);
    /// Passes over the bracket that opens a list or an object.
    void Enter() { ++m_at; }
    /// Passes over the bracket that closes it, where nothing stood before it.
    void Leave(bool isEmpty) {
        PassSpace();
        m_at += isEmpty;
    }
    void PassKey();
    /// Passes over a child, with what stands behind it: a comma or the closing bracket.
    template <class Visit>
    void VisitChild(Dom const& child, Visit visit) {
        PassSpace();
        auto const start = m_at;
        visit(child);
        if (m_at == start) // not entered
            PassValue();
        m_path.pop_back();
        PassSpace();
        ++m_at;
    }
    void PassSpace();
    void PassString();
    void PassValue();
    /// The end of the number, true, false or null that the walk stands on.
    std::size_t EndOfWord() const;
    void ReportUnknownKey(std::vector<char const*> const& known);

    std::string m_text;
    Dom m_root;
    bool m_isRead = false;
    std::size_t m_at = 0;
    std::size_t m_keyAt = 0;
    std::vector<Step> m_path;
    Findings m_findings;
    /// The place in the text of each finding.
    std::vector<std::size_t> m_places;
    /// The start of the line that was asked for last, and its number.
    std::size_t m_lineStart = 0;
    int m_line = 1;
    /// How far the text behind that start has been searched for the line's end in vain, since a document may stand
    /// on one line.
    std::size_t m_searched = 0;
};

} // namespace qel::SectrixTools
