#pragma once

#include <cstdint>
#include <string>

/// \file
/// What is run on hostile input: parts of the library, each with a judge of its answers.

namespace fuzz {

/// Ends the program where an answer is wrong, so that the input counts as a finding.
void Require(bool isTrue, char const* what);

/// The path of a file of the calling thread's own, in memory where the system has such a folder: nothing in it need
/// outlast the run.
std::string OwnFile();

/// The first eight bytes as a number.
std::uint64_t SeedIn(std::string const& bytes);

/// Takes bytes apart into numbers; past the end they are zeros.
class Input {
public:
    explicit Input(std::string const& bytes) : m_bytes(bytes) {}

    bool IsAtEnd() const { return m_place >= m_bytes.size(); }
    int Byte() { return IsAtEnd() ? 0 : static_cast<unsigned char>(m_bytes[m_place++]); }
    /// A number from 0 to `bound` - 1, for a bound up to 65536.
    int Below(int bound) {
        int const low = Byte();
        return (bound > 256 ? low + 256 * Byte() : low) % bound;
    }
    /// Mostly a small integer, times the scale that the input began with; at times an oddity, and at times any
    /// eight bytes.
    double Coordinate();
    /// Reads what scales the coordinates to come.
    void ReadScale();

private:
    std::string const& m_bytes;
    std::size_t m_place = 0;
    double m_scale = 1.0, m_shift = 0.0;
};

/// Runs bytes through a part and gives back all that came out, numbers to the last bit.
struct Target {
    /// Also the name of its folder in the corpus.
    char const* m_name;
    std::string (*m_run)(std::string const& bytes);
    /// True where the word "shape" and eight bytes behind it stand for a structured input that they are the seed
    /// of.
    bool m_takesShapes = false;
};

/// The bytes are the text of a document: read, cut, dumped, written, read again and compared, blended with itself.
std::string RunSectionDocument(std::string const& bytes);
/// The bytes are the text of a document, read as an extrusion, as an end plane and as a position.
std::string RunExtrusion(std::string const& bytes);
/// The bytes are the text of a document; what the checks say of it is held against what is read. Only where the
/// tools are built.
std::string RunChecks(std::string const& bytes);
/// A section with any loops, cut, beside the plain twin.
std::string RunCutting(std::string const& bytes);
/// Two sets of sections, compared and blended, beside the plain twin.
std::string RunAlignment(std::string const& bytes);
/// A mesh, merged, beside the plain twin.
std::string RunMesh(std::string const& bytes);
/// The bytes are a database file, from which both records pull.
std::string RunDatabase(std::string const& bytes);
/// Both text conversions, beside a plain reading of their tables.
std::string RunText(std::string const& bytes);

inline constexpr Target kTargets[] = {
    {"section_document", RunSectionDocument},
    {"extrusion", RunExtrusion},
#ifdef SECTRIX_WITH_TOOLS
    {"checks", RunChecks, true},
#endif
    {"cutting", RunCutting, true},
    {"alignment", RunAlignment, true},
    {"mesh", RunMesh},
    {"database", RunDatabase},
    {"text", RunText},
};

} // namespace fuzz
