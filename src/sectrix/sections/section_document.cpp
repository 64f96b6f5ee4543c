#include "sectrix/foundation/detail/reserve_more.h"
#include "sectrix/foundation/json_tag.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/sections/cross_sections.h"

#include <algorithm>
#include <istream>
#include <memory>

namespace qel::Sectrix {

namespace {

// The elements of a pair. Of this type, so that a literal 0 is no null key to a document tree of whatever make.
constexpr std::uint64_t kFirst = 0;
constexpr std::uint64_t kSecond = 1;

/// What the stream gives of `length` bytes, with a zero byte behind.
std::unique_ptr<char[]> ReadText(std::istream& stream, std::streamoff length) {
    std::unique_ptr<char[]> text;
    std::streamoff count = 0;
    auto const readUpTo = [&](std::streamoff end) {
        std::unique_ptr<char[]> longer(new char[static_cast<std::size_t>(end) + 1]); // without filling it first
        std::copy_n(text.get(), count, longer.get());
        stream.read(longer.get() + count, end - count);
        count += stream.gcount();
        longer[static_cast<std::size_t>(count)] = '\0';
        text = std::move(longer);
    };
    // A folder that has been opened as a file reports the greatest length there is. So room for all of a long text
    // is made only once the stream has given a piece.
    std::streamoff const piece = 1 << 20;
    readUpTo(std::min(length, piece));
    if (stream && length > piece)
        readUpTo(length);
    return text;
}

void ReadSections(Dom const& nodes, CSPositions& pool, std::vector<CrossSection>& sections) {
    // Growing would copy every section. What has no loops gives none, and may be many.
    std::size_t count = 0;
    for (std::uint64_t i = 0; i < nodes.size(); ++i)
        count += nodes[i].size() > 0 || nodes[i].has(JsonTag::kCSLoopsTag);
    ReserveMore(sections, count);
    for (std::uint64_t i = 0; i < nodes.size(); ++i)
        if (!sections.emplace_back(pool, false).From(nodes[i]))
            sections.pop_back();
}

} // namespace

void CrossSections::From(std::istream& stream) {
    stream.seekg(0, std::ios::end);
    auto const length = static_cast<std::streamoff>(stream.tellg());
    stream.seekg(0, std::ios::beg);
    if (length <= 0)
        return;
    Dom document;
    DomReaderJson::FromString(document, ReadText(stream, length).get(), nullptr);
    From(document);
}

void CrossSections::From(Dom const& dom) {
    auto const& outlines = dom[dom.has(JsonTag::kOutlinesTag) ? JsonTag::kOutlinesTag : JsonTag::kOutlinesLCTag];
    if (outlines.size() > 0)
        ReadPositions(outlines[kFirst]);
    if (outlines.size() == 1)
        m_items.emplace_back(m_positions, true);
    else if (outlines.size() > 1)
        ReadSections(outlines[kSecond], m_positions, m_items);
    ConvertPositions(m_scale);

    m_parameters.clear();
    if (dom.has(JsonTag::kParamsTag) && dom[JsonTag::kParamsTag].isObject())
        for (auto const& [name, value] : dom[JsonTag::kParamsTag].objects())
            m_parameters[name] = value.asDouble(0.0);
}

void CrossSections::ReadPositions(Dom const& nodes) {
    std::size_t count = 0;
    for (std::uint64_t i = 0; i < nodes.size(); ++i)
        count += nodes[i].isArray() || nodes[i].isObject();
    ReserveMore(m_positions.m_positions, count);
    auto named = m_positions.m_nameIndex.end();
    for (std::uint64_t i = 0; i < nodes.size(); ++i) {
        auto const& node = nodes[i];
        auto const& point = node.has(JsonTag::kCSCoordinatesTag) ? node[JsonTag::kCSCoordinatesTag] : node;
        if (!point.isArray() || point.size() < 2)
            continue;
        // What is no number is 0.
        Vec<2, double> const position{point[kFirst].asDouble(0.0), point[kSecond].asDouble(0.0)};
        if (node.has(JsonTag::kCSCoordNameTag)) // a name ends at its first zero byte
            m_positions.AddPosition(node[JsonTag::kCSCoordNameTag].asString({}).c_str(), position, named);
        else
            m_positions.AddPosition(position);
    }
}

bool CrossSection::From(Dom const& dom) {
    if (dom.has(JsonTag::kCSAssemblyPartNameTag))
        m_assemblyPartName = dom[JsonTag::kCSAssemblyPartNameTag].asString({});
    auto const& loops = dom.has(JsonTag::kCSLoopsTag) ? dom[JsonTag::kCSLoopsTag] : dom;
    if (!loops.isArray() || loops.size() == 0)
        return false;

    int exteriorCount = 0;
    for (std::uint64_t i = 0; i < loops.size(); ++i) {
        auto const& pair = loops[i];
        if (pair.size() < 2)
            continue;
        bool const exterior = pair[kSecond].asBool(false);
        exteriorCount += exterior;
        auto& loop = exterior ? m_exteriorLoop : AddInteriorLoop();
        if (!loop.From(pair[kFirst], exterior))
            return false;
    }
    return exteriorCount == 1;
}

bool Loop::From(Dom const& dom, bool exterior) {
    auto const before = static_cast<std::ptrdiff_t>(m_vertices.size());
    ReserveMore(m_vertices, dom.size());
    for (std::uint64_t i = 0; i < dom.size(); ++i) {
        auto const index = static_cast<int>(static_cast<std::uint32_t>(dom[i].asInt(0))); // the low 32 bits
        if (m_positions->Find(index))
            m_vertices.emplace_back(index, true);
    }
    auto const read = m_vertices.begin() + before;
    bool const hasRead = read != m_vertices.end();
    if (!exterior) {
        std::reverse(read, m_vertices.end());
        std::rotate(m_vertices.begin(), read, m_vertices.end());
    }

    if (m_vertices.empty())
        return false;
    bool const isClosed = m_vertices.front().Index() == m_vertices.back().Index();
    if (isClosed)
        m_vertices.pop_back();
    if (isClosed || hasRead)
        Touch();
    return m_vertices.size() > 2;
}

void CrossSections::To(Dom& dom) {
    auto& outlines = dom[JsonTag::kOutlinesTag].toArray();
    auto& positions = outlines.append().toArray();
    for (auto const& position : m_positions.m_positions) {
        auto& node = positions.append().toObject();
        node[JsonTag::kCSCoordNameTag] = Dom(position.Name());
        auto& coordinates = node[JsonTag::kCSCoordinatesTag].toArray();
        coordinates.append() = Dom(position.Position()[0]);
        coordinates.append() = Dom(position.Position()[1]);
    }
    auto& sections = outlines.append().toArray();
    for (auto& section : m_items)
        section.To(sections.append().toObject());

    if (m_parameters.empty())
        return;
    auto& parameters = dom[JsonTag::kParamsTag].toArray();
    for (auto const& [name, value] : m_parameters)
        parameters.append()[name] = Dom(value);
}

void CrossSection::To(Dom& dom) {
    if (!m_assemblyPartName.empty())
        dom[JsonTag::kCSAssemblyPartNameTag] = Dom(m_assemblyPartName);
    auto& loops = dom[JsonTag::kCSLoopsTag].toArray();
    auto const write = [&loops](Loop& loop, bool exterior) {
        auto& pair = loops.append().toArray();
        loop.To(pair.append().toArray(), exterior);
        pair.append() = Dom(exterior);
    };
    write(m_exteriorLoop, true);
    for (auto& loop : m_interiorLoops)
        write(loop, false);
}

void Loop::To(Dom& dom, bool exterior) {
    auto const count = m_vertices.size();
    for (std::size_t i = 0; i < count; ++i)
        dom.append() = Dom(m_vertices[exterior ? i : count - 1 - i].Index());
}

} // namespace qel::Sectrix
