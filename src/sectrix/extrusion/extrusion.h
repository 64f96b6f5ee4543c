#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/position.h"

#include <string>
#include <vector>

/// \file
/// Parts that are described by 3D polylines: an extrusion is a list of sections, a section a list of profiles, a
/// profile a list of positions. An end plane is a record of its own.
///
/// All of them only read. A `from` returns true whatever it is given. A key that is missing leaves its field as it
/// was. What has the wrong kind adds nothing to a list and leaves "Start" as it was, but makes "Exterior" false,
/// "assemblyPartName" empty and "Skew" 0; origins, normals and points are read as `Position::from` says. A list is
/// added to, never emptied first, and each of its document's elements adds one of its own, of whatever kind. Each
/// list gets room for exactly what is added; the cost is that of the document, and of moving what was there before.
/// When memory runs out what was read stays. Copies are deep.

namespace qel {

class Dom;

namespace Sectrix {

/// One end of a sweep: a point, a direction and a skew. A plain value; moving one is copying it.
class SECTRIX_EXPORT EndPlane {
public:
    /// True for the start of the sweep, false for its end.
    bool IsStart() const { return m_isStart; }
    /// A point of the plane.
    Position const& Origin() const { return m_origin; }
    /// A direction, as it was read: not normalised and not tested.
    Position const& Normal() const { return m_normal; }
    /// The skew, as it was read.
    double Skew() const { return m_skew; }

    /// Reads "Start", where anything but a boolean leaves it as it was, "Origin" and "Normal" as `Position::from`
    /// does, and "Skew", where anything but a number makes it 0.
    bool from(Dom const& dom);

private:
    Position m_origin;
    Position m_normal;
    double m_skew = 0.0;
    bool m_isStart = true;
};

/// A 3D polyline.
class SECTRIX_EXPORT Profile {
public:
    Profile() = default;
    /// A full copy.
    Profile(Profile const& other) = default;
    /// Takes the positions over and leaves `other` without any.
    Profile(Profile&& other) noexcept;
    /// Takes a full copy.
    Profile& operator=(Profile const& other) = default;
    /// Takes the positions over and leaves `other` without any.
    Profile& operator=(Profile&& other) noexcept;

    /// In document order. A point of fewer than three elements is there too, and is not valid.
    std::vector<Position> const& Positions() const { return m_positions; }

    /// Adds the positions under "Points".
    bool from(Dom const& dom);

private:
    std::vector<Position> m_positions;
};

/// The profiles of one section.
class SECTRIX_EXPORT ExtrudedSection {
public:
    ExtrudedSection() = default;
    /// A full copy.
    ExtrudedSection(ExtrudedSection const& other) = default;
    /// Takes the profiles over and leaves `other` without any; `other` keeps its flag.
    ExtrudedSection(ExtrudedSection&& other) noexcept;
    /// Takes a full copy.
    ExtrudedSection& operator=(ExtrudedSection const& other) = default;
    /// Takes the profiles over and leaves `other` without any; `other` keeps its flag.
    ExtrudedSection& operator=(ExtrudedSection&& other) noexcept;

    /// True for an outline, as is the default; false for a hole.
    bool Exterior() const { return m_exterior; }
    /// In document order.
    std::vector<Profile> const& Profiles() const { return m_profiles; }

    /// Reads "Exterior", where anything but a boolean makes it false, and adds the profiles under "Profiles".
    bool from(Dom const& dom);

private:
    std::vector<Profile> m_profiles;
    bool m_exterior = true;
};

/// A part as a list of sections.
class SECTRIX_EXPORT Extrusion {
public:
    Extrusion() = default;
    /// A full copy.
    Extrusion(Extrusion const& other) = default;
    /// Takes all over and leaves `other` empty.
    Extrusion(Extrusion&& other) noexcept;
    /// Takes a full copy.
    Extrusion& operator=(Extrusion const& other) = default;
    /// Takes all over and leaves `other` empty.
    Extrusion& operator=(Extrusion&& other) noexcept;

    /// UTF-8.
    std::string const& AssemblyPartName() const { return m_assemblyPartName; }
    /// In document order.
    std::vector<ExtrudedSection> const& Sections() const { return m_sections; }

    /// Reads "assemblyPartName", where anything but a string makes it empty, and adds the sections under
    /// "Sections".
    bool from(Dom const& dom);

private:
    std::string m_assemblyPartName;
    std::vector<ExtrudedSection> m_sections;
};

} // namespace Sectrix
} // namespace qel
