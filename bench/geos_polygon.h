#pragma once

#include "support/shapes.h"

#include <geos_c.h>
#include <vector>

/// \file
/// A shape as the polygon of the peer.

class GeosPolygon {
public:
    explicit GeosPolygon(shapes::Shape const& shape) {
        initGEOS(nullptr, nullptr);
        std::vector<GEOSGeometry*> holes;
        for (std::size_t i = 1; i < shape.loops.size(); ++i)
            holes.push_back(Ring(shape, shape.loops[i]));
        m_polygon =
            GEOSGeom_createPolygon(Ring(shape, shape.loops[0]), holes.data(), static_cast<unsigned>(holes.size()));
    }
    GeosPolygon(GeosPolygon const&) = delete;
    GeosPolygon& operator=(GeosPolygon const&) = delete;
    ~GeosPolygon() { GEOSGeom_destroy(m_polygon); }

    GEOSGeometry const* Get() const { return m_polygon; }

private:
    static GEOSGeometry* Ring(shapes::Shape const& shape, std::vector<int> const& loop) {
        auto* points = GEOSCoordSeq_create(static_cast<unsigned>(loop.size()) + 1, 2);
        for (std::size_t i = 0; i <= loop.size(); ++i) {
            auto const& point = shape.points[static_cast<std::size_t>(loop[i % loop.size()])];
            GEOSCoordSeq_setXY(points, static_cast<unsigned>(i), point.x, point.y);
        }
        return GEOSGeom_createLinearRing(points);
    }

    GEOSGeometry* m_polygon;
};
