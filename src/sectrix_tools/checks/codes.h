#pragma once

#include "sectrix_tools/checks/finding.h"

#include <string_view>

/// \file
/// The codes of findings, and what reading does with what each stands at.

namespace qel::SectrixTools {

/// What reading does where a finding stands.
enum class Effect {
    /// It keeps what is written.
    Keeps,
    /// It keeps another value, such as 0 for text, in the place of the one that is written.
    Alters,
    /// It passes over the element that the finding points at, and what is in it.
    Drops,
    /// It passes over the position of a section document that the finding points at or into. The position takes no
    /// index, so those behind it move up.
    DropsPosition,
    /// It passes over the section that the finding points at or into.
    DropsSection,
    /// It reads nothing of the document.
    DropsAll
};

/// A kind of finding.
struct Code {
    /// What `Finding::m_code` holds.
    char const* m_name;
    /// The severity of every finding with this code.
    Severity m_severity;
    /// What reading does where such a finding stands. All but `Keeps` make an error.
    Effect m_effect;
};

/// All codes there are, in the order of docs/checks.md, which says of each what to do.
inline constexpr Code kCodes[] = {
    // The text.
    {"text-empty", Severity::Error, Effect::DropsAll},
    {"text-not-utf-8", Severity::Error, Effect::DropsAll},
    {"text-no-json", Severity::Error, Effect::DropsAll},
    {"text-too-deep", Severity::Error, Effect::DropsAll},
    {"number-out-of-range", Severity::Error, Effect::DropsAll},
    {"text-after-zero-byte", Severity::Error, Effect::Drops},
    // Any document.
    {"no-object", Severity::Error, Effect::DropsAll},
    {"unknown-key", Severity::Error, Effect::Drops},
    {"key-repeated", Severity::Error, Effect::Drops},
    {"no-list", Severity::Error, Effect::Drops},
    {"element-not-read", Severity::Error, Effect::Drops},
    {"no-number", Severity::Error, Effect::Alters},
    {"no-text", Severity::Error, Effect::Alters},
    {"no-boolean", Severity::Error, Effect::Alters},
    {"coordinates-too-many", Severity::Error, Effect::Drops},
    // Section documents: the root.
    {"no-outlines", Severity::Error, Effect::Keeps},
    {"outlines-twice", Severity::Error, Effect::Drops},
    {"no-parameters", Severity::Error, Effect::Drops},
    {"no-sections", Severity::Warning, Effect::Keeps},
    // Positions.
    {"no-position", Severity::Error, Effect::DropsPosition},
    {"no-coordinates", Severity::Error, Effect::DropsPosition},
    {"name-zero-byte", Severity::Error, Effect::Alters},
    {"name-repeated", Severity::Warning, Effect::Keeps},
    {"position-unused", Severity::Warning, Effect::Keeps},
    {"too-few-positions", Severity::Error, Effect::Keeps},
    // Sections and loops.
    {"no-section", Severity::Error, Effect::DropsSection},
    {"no-loops", Severity::Error, Effect::DropsSection},
    {"no-exterior", Severity::Error, Effect::DropsSection},
    {"exterior-repeated", Severity::Error, Effect::DropsSection},
    {"no-loop", Severity::Error, Effect::Drops},
    {"loop-too-short", Severity::Error, Effect::DropsSection},
    {"index-no-number", Severity::Error, Effect::Alters},
    {"index-fraction", Severity::Error, Effect::Alters},
    {"index-wraps", Severity::Error, Effect::Alters},
    {"index-negative", Severity::Error, Effect::Drops},
    {"index-out-of-range", Severity::Error, Effect::Drops},
    {"index-twice-in-a-row", Severity::Warning, Effect::Keeps},
    {"index-twice-in-loop", Severity::Warning, Effect::Keeps},
    // Extrusion documents.
    {"no-content", Severity::Error, Effect::Alters},
    {"nothing-in-it", Severity::Warning, Effect::Keeps},
    {"point-incomplete", Severity::Error, Effect::Alters},
    {"profile-too-short", Severity::Warning, Effect::Keeps},
    {"no-plane", Severity::Warning, Effect::Keeps},
    {"normal-zero", Severity::Warning, Effect::Keeps},
    // Geometry.
    {"coordinate-not-finite", Severity::Error, Effect::Keeps},
    {"coordinate-too-large", Severity::Error, Effect::Keeps},
    {"edge-without-length", Severity::Warning, Effect::Keeps},
    {"loop-without-area", Severity::Error, Effect::Keeps},
    {"spike", Severity::Warning, Effect::Keeps},
    {"outline-clockwise", Severity::Error, Effect::Keeps},
    {"hole-counter-clockwise", Severity::Error, Effect::Keeps},
    {"edges-cross", Severity::Error, Effect::Keeps},
    {"edges-touch", Severity::Warning, Effect::Keeps},
    {"point-repeated", Severity::Warning, Effect::Keeps},
    {"edges-run-back", Severity::Warning, Effect::Keeps},
    {"edges-overlap", Severity::Error, Effect::Keeps},
    {"hole-outside", Severity::Error, Effect::Keeps},
    {"hole-crosses-outline", Severity::Error, Effect::Keeps},
    {"hole-on-outline", Severity::Error, Effect::Keeps},
    {"hole-touches-outline", Severity::Warning, Effect::Keeps},
    {"hole-inside-hole", Severity::Error, Effect::Keeps},
    {"holes-cross", Severity::Error, Effect::Keeps},
    {"holes-touch", Severity::Warning, Effect::Keeps},
    {"below-tolerance", Severity::Warning, Effect::Keeps},
    {"beyond-tolerance", Severity::Warning, Effect::Keeps},
    {"convex-loop-not-convex", Severity::Error, Effect::Keeps},
    {"areas-differ", Severity::Error, Effect::Keeps},
    {"search-stopped", Severity::Warning, Effect::Keeps},
    {"not-listed", Severity::Warning, Effect::Keeps},
    // Blending.
    {"section-count-differs", Severity::Error, Effect::Keeps},
    {"section-without-partner", Severity::Error, Effect::Keeps},
    {"part-name-differs", Severity::Warning, Effect::Keeps},
    {"name-count-differs", Severity::Error, Effect::Keeps},
    {"hole-count-differs", Severity::Error, Effect::Keeps},
    {"hole-without-partner", Severity::Error, Effect::Keeps},
    {"vertex-count-differs", Severity::Error, Effect::Keeps},
    {"name-missing", Severity::Error, Effect::Keeps},
    {"loop-name-repeated", Severity::Error, Effect::Keeps},
    {"direction-differs", Severity::Error, Effect::Keeps},
    {"order-differs", Severity::Error, Effect::Keeps},
    {"vertex-differs", Severity::Error, Effect::Keeps},
    {"names-in-one-set", Severity::Warning, Effect::Keeps},
    {"loop-without-names", Severity::Warning, Effect::Keeps},
    {"partner-shared", Severity::Warning, Effect::Keeps},
    {"parameter-missing", Severity::Warning, Effect::Keeps},
};

/// The code of this name; null where there is none.
constexpr Code const* FindCode(std::string_view name) {
    for (auto const& code : kCodes)
        if (name == code.m_name)
            return &code;
    return nullptr;
}

} // namespace qel::SectrixTools
