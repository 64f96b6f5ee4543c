#include "sectrix/extrusion/extrusion.h"
#include "sectrix/foundation/json_tag.h"
#include "sectrix/interfaces/dom.h"

#include <utility>

namespace qel::Sectrix {

namespace {

template <class Element>
void ReadList(Dom const& dom, char const* key, std::vector<Element>& list) {
    if (!dom.has(key) || !dom[key].isArray())
        return;
    Dom const& elements = dom[key];
    list.reserve(list.size() + elements.size());
    for (std::uint64_t i = 0; i < elements.size(); ++i)
        list.emplace_back().from(elements[i]);
}

} // namespace

bool EndPlane::from(Dom const& dom) {
    if (dom.has(JsonTag::kStartTag) && dom[JsonTag::kStartTag].isBool())
        m_isStart = dom[JsonTag::kStartTag].asBool(false);
    if (dom.has(JsonTag::kOriginTag))
        m_origin.from(dom[JsonTag::kOriginTag]);
    if (dom.has(JsonTag::kNormalTag))
        m_normal.from(dom[JsonTag::kNormalTag]);
    if (dom.has(JsonTag::kSkewTag))
        m_skew = dom[JsonTag::kSkewTag].asDouble(0.0);
    return true;
}

Profile::Profile(Profile&& other) noexcept : m_positions(std::exchange(other.m_positions, {})) {}

Profile& Profile::operator=(Profile&& other) noexcept {
    m_positions = std::exchange(other.m_positions, {});
    return *this;
}

bool Profile::from(Dom const& dom) {
    ReadList(dom, JsonTag::kPointsTag, m_positions);
    return true;
}

ExtrudedSection::ExtrudedSection(ExtrudedSection&& other) noexcept
    : m_profiles(std::exchange(other.m_profiles, {})), m_exterior(other.m_exterior) {}

ExtrudedSection& ExtrudedSection::operator=(ExtrudedSection&& other) noexcept {
    m_profiles = std::exchange(other.m_profiles, {});
    m_exterior = other.m_exterior;
    return *this;
}

bool ExtrudedSection::from(Dom const& dom) {
    if (dom.has(JsonTag::kExteriorTag))
        m_exterior = dom[JsonTag::kExteriorTag].asBool(false);
    ReadList(dom, JsonTag::kProfilesTag, m_profiles);
    return true;
}

Extrusion::Extrusion(Extrusion&& other) noexcept
    : m_assemblyPartName(std::exchange(other.m_assemblyPartName, {})),
      m_sections(std::exchange(other.m_sections, {})) {}

Extrusion& Extrusion::operator=(Extrusion&& other) noexcept {
    m_assemblyPartName = std::exchange(other.m_assemblyPartName, {});
    m_sections = std::exchange(other.m_sections, {});
    return *this;
}

bool Extrusion::from(Dom const& dom) {
    if (dom.has(JsonTag::kCSAssemblyPartNameTag))
        m_assemblyPartName = dom[JsonTag::kCSAssemblyPartNameTag].asString({});
    ReadList(dom, JsonTag::kSectionsTag, m_sections);
    return true;
}

} // namespace qel::Sectrix
