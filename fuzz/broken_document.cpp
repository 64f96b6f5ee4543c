#include "broken_document.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <random>

namespace fuzz {

namespace {

class Writer {
public:
    explicit Writer(std::uint64_t seed) : m_random(seed), m_rarity(4 + Below(60)) {}

    std::string Write() {
        if (Below(40) == 0)
            Odd();
        else if (int const kind = Below(8); kind < 5)
            SectionDocument();
        else if (kind < 7)
            Extrusion();
        else
            EndPlane();
        Space();
        if (Below(6) == 0)
            Spoil();
        return m_text;
    }

private:
    int Below(int bound) { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }
    bool IsFaulty() { return Below(m_rarity) == 0; }

    void Space() {
        char const* const spaces[] = {"", "", "", " ", "\n", " \t", "\r\n"};
        m_text += spaces[Below(7)];
    }

    void Odd() {
        char const* const odds[] = {"null",
                                    "true",
                                    "0",
                                    "-1",
                                    "2.5",
                                    "1e30",
                                    "\"x\"",
                                    "\"\"",
                                    "[]",
                                    "{}",
                                    "[0]",
                                    "[0, 1, 2]",
                                    "{\"a\": 1}",
                                    "1e2",
                                    "false",
                                    "\"A\\u0000\"",
                                    "4294967297",
                                    "-0.0",
                                    "\"]},\\\"\"",
                                    "[[[\"]\"]], {}]",
                                    "9223372036854775808"};
        m_text += odds[Below(static_cast<int>(std::size(odds)))];
    }

    /// Writes a value, or something odd in its place.
    template <class Write>
    void Value(Write write) {
        Space();
        if (IsFaulty())
            Odd();
        else
            write();
        Space();
    }

    void Number() {
        Value([&] {
            // One after the other: compilers evaluate the parts of a sum in either order.
            char const* const forms[] = {"", ".0", ".5", "e1"};
            m_text += Below(4) == 0 ? "-" : "";
            m_text += std::to_string(Below(30));
            int const form = Below(3) == 0 ? Below(4) : 0;
            m_text += forms[form];
        });
    }

    void Bool() {
        Value([&] { m_text += Below(2) ? "true" : "false"; });
    }

    void Name() {
        Value([&] {
            char const* const names[] = {"", "A", "B", "C", "A\\u0000B", "\\u00e9\xC3\xA9", "a/b~c", "\\\\"};
            m_text += std::string("\"") + names[Below(8)] + '"';
        });
    }

    template <class Element>
    void List(int count, Element element) {
        Value([&] {
            m_text += '[';
            if (IsFaulty())
                count += Below(3) - 1;
            for (int i = 0; i < count; ++i) {
                m_text += i > 0 ? "," : "";
                element(i);
            }
            Space();
            m_text += ']';
        });
    }

    std::string Misspelt(std::string key) {
        switch (Below(4)) {
        case 0:
            key[0] = static_cast<char>(std::islower(key[0]) ? std::toupper(key[0]) : std::tolower(key[0]));
            return key;
        case 1:
            key.pop_back();
            return key;
        case 2:
            return "other/~" + key;
        default:
            return Below(2) ? "" : "Outlines\\u0000";
        }
    }

    template <class Write>
    void Member(std::string const& key, Write write) {
        if (IsFaulty())
            return;
        do {
            m_text += m_text.back() == '{' ? "" : ",";
            Space();
            m_text += '"' + (IsFaulty() ? Misspelt(key) : key) + '"';
            Space();
            m_text += ':';
            write();
        } while (IsFaulty());
    }

    template <class Write>
    void Object(Write write) {
        Value([&] {
            m_text += '{';
            write();
            m_text += '}';
        });
    }

    void Point(int dimensions) {
        List(dimensions, [&](int) { Number(); });
    }

    void SectionDocument() {
        Object([&] {
            if (Below(3) == 0)
                Member("Params", [&] { Parameters(); });
            Member(Below(5) ? "Outlines" : "outlines",
                   [&] { List(Below(6) ? 2 : 1, [&](int place) { place == 0 ? Positions() : Sections(); }); });
            if (Below(2) == 0)
                Member("Params", [&] { Parameters(); });
        });
    }

    void Parameters() {
        Object([&] {
            for (int i = Below(3); i > 0; --i)
                Member(Below(2) ? "Width" : "b/~", [&] { Number(); });
        });
    }

    void Positions() {
        m_count = Below(9);
        List(m_count, [&](int) {
            if (Below(2))
                return Point(2);
            Object([&] {
                if (Below(3))
                    Member("name", [&] { Name(); });
                Member("coordinates", [&] { Point(2); });
                if (Below(6) == 0)
                    Member("name", [&] { Name(); });
            });
        });
    }

    void Sections() {
        List(Below(4), [&](int) {
            if (Below(3) == 0)
                return Loops();
            Object([&] {
                Member("assemblyPartName", [&] { Name(); });
                Member("loops", [&] { Loops(); });
            });
        });
    }

    void Loops() {
        int const exterior = Below(3);
        List(1 + Below(3), [&](int place) {
            List(2, [&](int part) {
                if (part == 0)
                    return Indices();
                Value([&] { m_text += (place == exterior % 2) != IsFaulty() ? "true" : "false"; });
            });
        });
    }

    void Indices() {
        int const first = Below(m_count + 1);
        int const count = 3 + Below(4);
        List(count, [&](int place) {
            Value([&] {
                bool const isClosing = place + 1 == count && Below(3) == 0;
                int const bound = std::max(m_count + (Below(9) == 0), 1);
                int const index = isClosing || Below(12) == 0 ? first : (first + place) % bound;
                m_text += std::to_string(index) + (Below(30) == 0 ? ".0" : "");
            });
        });
    }

    void Extrusion() {
        Object([&] {
            Member("assemblyPartName", [&] { Name(); });
            Member("Sections", [&] {
                List(Below(3), [&](int) {
                    Object([&] {
                        Member("Exterior", [&] { Bool(); });
                        Member("Profiles", [&] {
                            List(Below(3), [&](int) {
                                Object([&] { Member("Points", [&] { List(Below(4), [&](int) { Point(3); }); }); });
                            });
                        });
                    });
                });
            });
        });
    }

    void EndPlane() {
        Object([&] {
            Member("Start", [&] { Bool(); });
            Member("Origin", [&] { Point(3); });
            Member("Normal", [&] { Point(3); });
            Member("Skew", [&] { Number(); });
        });
    }

    /// Breaks the text somewhere.
    void Spoil() {
        char const* const pieces[] = {",", "}", "]", "\"", "\xE9", "\\", "1e999", "123456789012345678901234567890",
                                      ":", "x"};
        auto const place = static_cast<std::size_t>(Below(static_cast<int>(m_text.size()) + 1));
        switch (Below(4)) {
        case 0:
            m_text.resize(place);
            break;
        case 1:
            m_text.insert(place, 1, '\0');
            break;
        case 2:
            m_text.insert(0, "\xEF\xBB\xBF");
            break;
        default:
            m_text.insert(place, pieces[Below(10)]);
        }
    }

    std::mt19937_64 m_random;
    int m_rarity;
    std::string m_text;
    /// The number of positions that were meant.
    int m_count = 0;
};

} // namespace

std::string BrokenDocument(std::uint64_t seed) {
    return Writer(seed).Write();
}

} // namespace fuzz
