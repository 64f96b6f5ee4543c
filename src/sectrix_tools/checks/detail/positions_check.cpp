#include "sectrix_tools/checks/detail/positions_check.h"

#include "sectrix/foundation/json_tag.h"

namespace qel::SectrixTools {

using Sectrix::JsonTag;

namespace {

constexpr char const* kMovesUp = "; the position takes no index, so those behind it move up";

bool HasCoordinates(Dom const& node) {
    return node.isArray() && node.size() >= 2;
}

} // namespace

void PositionsCheck::Check(Dom const& positions) {
    m_pointer = m_walk.Pointer();
    m_place = m_walk.Place();
    if (!m_walk.CheckList(positions, "positions"))
        return;
    m_pool.reserve(positions.size());
    m_walk.Elements(positions, [&](std::uint64_t element, Dom const& position) {
        Kept const kept{m_walk.LastStep(), static_cast<int>(element), m_walk.Place()};
        if (HasCoordinates(position.isArray() ? position : position[JsonTag::kCSCoordinatesTag]))
            m_pool.push_back(kept);
        if (position.isArray())
            CheckCoordinates(position);
        else if (position.isObject())
            CheckObject(position);
        else
            m_walk.Report("no-position", m_walk.Words(position) + " is no position" + kMovesUp);
    });
}

void PositionsCheck::CheckObject(Dom const& position) {
    auto const& coordinates = position[JsonTag::kCSCoordinatesTag];
    if (!position.has(JsonTag::kCSCoordinatesTag))
        m_walk.Report("no-coordinates", std::string("there are no \"coordinates\"") + kMovesUp);
    std::array const keys{JsonTag::kCSCoordNameTag, JsonTag::kCSCoordinatesTag};
    m_walk.Members(position, keys, [&](std::size_t which, Dom const& value) {
        if (which == 1)
            CheckCoordinates(value);
        else if (HasCoordinates(coordinates))
            CheckName(value);
    });
}

void PositionsCheck::CheckCoordinates(Dom const& coordinates) {
    if (!coordinates.isArray()) {
        m_walk.Report("no-coordinates",
                      m_walk.Words(coordinates) + " stands where x and y are expected" + kMovesUp);
        return;
    }
    if (coordinates.size() < 2) {
        m_walk.Report("no-coordinates", std::string(coordinates.size() == 0 ? "there is no coordinate"
                                                                            : "there is only one coordinate") +
                                            kMovesUp);
        return;
    }
    m_walk.Elements(coordinates, [&](std::uint64_t place, Dom const& coordinate) {
        if (place < 2)
            m_walk.CheckNumber(coordinate, "the coordinate");
        else if (place == 2)
            m_walk.Report("coordinates-too-many",
                          "only the first two of " + std::to_string(coordinates.size()) +
                              " coordinates are read; a comma may stand where a decimal point is meant");
    });
}

void PositionsCheck::CheckName(Dom const& node) {
    if (!m_walk.CheckText(node, "the name"))
        return;
    auto name = node.asString({});
    if (auto const end = name.find('\0'); end != std::string::npos) {
        m_walk.Report("name-zero-byte", "the name ends at its first zero byte");
        name.resize(end);
    }
    if (name.empty())
        return;
    auto const index = static_cast<int>(m_pool.size()) - 1;
    auto const [entry, isNew] = m_names.emplace(std::move(name), index);
    if (!isNew)
        m_walk.Report("name-repeated", "the position " + std::to_string(entry->second) + " has the name " +
                                           m_walk.Words(node) + " too; by its name the last one is found");
}

void PositionsCheck::ReportUnused() {
    for (std::size_t index = 0; index < m_pool.size(); ++index)
        if (auto const& kept = m_pool[index]; kept.m_lastLoop == 0)
            m_walk.ReportAt(kept.m_place, DocumentWalk::Extended(m_pointer, kept.m_step), "position-unused",
                            "no loop uses the position " + std::to_string(index));
}

} // namespace qel::SectrixTools
