#include "sectrix/foundation/detail/reserve_more.h"
#include "sectrix/foundation/json_tag.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/sections/cross_sections.h"

#include <algorithm>
#include <istream>

namespace qel::Sectrix {

namespace {

// The elements of a pair. Of this type, so that a literal 0 is no null key to a document tree of whatever make.
constexpr std::uint64_t kFirst = 0;
constexpr std::uint64_t kSecond = 1;

/// Adds a position, x and then y, if that is what the node is. What is no number is 0.
void ReadPosition(Dom const& node, std::string const& name, CSPositions& pool) {
    if (node.isArray() && node.size() >= 2)
        pool.AddPosition(name, {node[kFirst].asDouble(0.0), node[kSecond].asDouble(0.0)});
}

/// What the stream gives of `length` bytes.
std::string ReadText(std::istream& stream, std::streamoff length) {
    std::string text;
    auto const readUpTo = [&](std::streamoff end) {
        auto const begin = text.size();
        text.resize(static_cast<std::size_t>(end));
        stream.read(text.data() + begin, end - static_cast<std::streamoff>(begin));
        text.resize(begin + static_cast<std::size_t>(stream.gcount()));
    };
    // A folder that has been opened as a file reports the greatest length there is. So room for all of a long text
    // is made only once the stream has given a piece.
    std::streamoff const piece = 1 << 20;
    readUpTo(std::min(length, piece));
    if (stream && length > piece)
        readUpTo(length);
    return text;
}

void ReadPositions(Dom const& nodes, CSPositions& pool) {
    for (std::uint64_t i = 0; i < nodes.size(); ++i) {
        auto const& node = nodes[i];
        std::string name;
        if (node.has(JsonTag::kCSCoordNameTag))
            name = node[JsonTag::kCSCoordNameTag].asString({}).c_str(); // ends at its first zero byte
        bool const isObject = node.has(JsonTag::kCSCoordinatesTag);
        ReadPosition(isObject ? node[JsonTag::kCSCoordinatesTag] : node, name, pool);
    }
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
    DomReaderJson::FromString(document, ReadText(stream, length).c_str(), nullptr);
    From(document);
}

void CrossSections::From(Dom const& dom) {
    auto const& outlines = dom[dom.has(JsonTag::kOutlinesTag) ? JsonTag::kOutlinesTag : JsonTag::kOutlinesLCTag];
    if (outlines.size() > 0)
        ReadPositions(outlines[kFirst], m_positions);
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
    std::vector<Vertex> read;
    read.reserve(dom.size());
    for (std::uint64_t i = 0; i < dom.size(); ++i) {
        auto const index = static_cast<int>(static_cast<std::uint32_t>(dom[i].asInt(0))); // the low 32 bits
        if (m_positions->Find(index))
            read.emplace_back(index, true);
    }
    if (!exterior)
        std::reverse(read.begin(), read.end());
    m_vertices.insert(exterior ? m_vertices.end() : m_vertices.begin(), read.begin(), read.end());

    if (m_vertices.empty())
        return false;
    bool const isClosed = m_vertices.front().Index() == m_vertices.back().Index();
    if (isClosed)
        m_vertices.pop_back();
    if (isClosed || !read.empty())
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
