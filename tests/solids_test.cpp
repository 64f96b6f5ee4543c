#include "sectrix_tools/checks/geometry_check.h"
#include "sectrix_tools/measures/loop_measures.h"
#include "sectrix_tools/measures/section_properties.h"
#include "sectrix_tools/solids/boundary.h"
#include "sectrix_tools/solids/placement.h"
#include "sectrix_tools/solids/sweep.h"
#include "support/meshes.h"
#include "support/shape_set.h"

#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <tuple>

using namespace qel;
using namespace qel::Sectrix;
using namespace qel::SectrixTools;

namespace {

/// What is not as it must be in a solid, judged edge by edge: empty for a good one.
std::string Faults(Solid const& solid) {
    for (auto const& finding : solid.m_findings)
        return finding.m_code;
    auto const& corners = solid.m_mesh.m_triangles;
    std::map<std::pair<std::uint32_t, std::uint32_t>, int> edges;
    std::vector<bool> used(solid.m_mesh.m_points.size());
    for (std::size_t i = 0; i < corners.size(); ++i) {
        ++edges[{corners[i], corners[i - i % 3 + (i + 1) % 3]}];
        used.at(corners[i]) = true;
    }
    for (auto const& [edge, uses] : edges)
        if (uses != 1 || edge.first == edge.second || edges.count({edge.second, edge.first}) != 1)
            return "an edge is not used once in each direction";
    if (std::count(used.begin(), used.end(), false) > 0)
        return "a point is not used";
    return IsClosed(solid.m_mesh) && Volume(solid.m_mesh) > 0 ? "" : "does not count as closed, or faces inward";
}

/// The bridge of the first hole rises to a corner, and that of the second hole ends on it, where rounding puts the
/// foot to either side.
shapes::Shape BridgeOnBridge(double width) {
    shapes::Shape shape;
    shape.AddLoop({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {-2, 5}});
    shape.AddLoop({{4, 5}, {5, 4}, {5, 5}}, true);
    shape.AddLoop({{5, 8}, {6, 7.5}, {6, 8.5}}, true);
    for (auto& point : shape.points)
        point.x *= width;
    return shape;
}

/// The least height of a triangle over its longest side.
double LeastHeight(TriangleMesh const& mesh) {
    double least = INFINITY;
    for (std::size_t i = 0; i < mesh.m_triangles.size(); i += 3) {
        TriangleMesh one;
        double longest = 0;
        for (std::size_t corner = 0; corner < 3; ++corner) {
            auto const& point = mesh.m_points[mesh.m_triangles[i + corner]];
            auto const& next = mesh.m_points[mesh.m_triangles[i + (corner + 1) % 3]];
            longest = std::max(longest, std::hypot(next[0] - point[0], next[1] - point[1], next[2] - point[2]));
            one.m_points.push_back(point);
        }
        one.m_triangles = {0, 1, 2};
        least = std::min(least, 2 * SurfaceArea(one) / longest);
    }
    return least;
}

Solid Prism(CrossSection const& section, double length) {
    return Sweep(
        {{&section, Placement({1, 2, 3}, {0, 1, 0})}, {&section, Placement({1, 2 + length, 3}, {0, 1, 0})}});
}

double Area(CrossSection const& section) {
    return PropertiesOf(section).m_area;
}

/// Turned a little, so that no ray of a bridge passes exactly through a vertex.
shapes::Shape Turned(shapes::Shape shape, double angle) {
    for (auto& [x, y] : shape.points)
        std::tie(x, y) =
            std::tuple(x * std::cos(angle) - y * std::sin(angle), x * std::sin(angle) + y * std::cos(angle));
    return shape;
}

CrossSections Sample(std::string const& name) {
    std::ifstream file(std::string(SECTRIX_TEST_DATA) + "/../../examples/data/" + name);
    CrossSections set;
    set.From(file);
    return set;
}

/// The sets along a span, from one to another, and the solid through their first sections.
struct Span {
    Span(CrossSections const& first, CrossSections const& second, std::vector<Mat<4, double>> const& placements) {
        for (std::size_t i = 0; i < placements.size(); ++i)
            m_sets.emplace_back(first, second, static_cast<double>(i) / static_cast<double>(placements.size() - 1),
                                false);
        std::vector<Station> stations;
        for (std::size_t i = 0; i < placements.size(); ++i)
            stations.push_back({&m_sets[i].Items()[0], placements[i]});
        m_solid = Sweep(stations);
    }

    std::vector<CrossSections> m_sets;
    Solid m_solid;
};

/// The placements along an arc about the z axis.
std::vector<Mat<4, double>> Arc(double radius, double angle, std::size_t count, double twist = 0) {
    std::vector<Vec<3, double>> points;
    std::vector<double> twists;
    for (std::size_t i = 0; i < count; ++i) {
        double const ratio = static_cast<double>(i) / static_cast<double>(count - 1);
        points.push_back({radius * std::cos(ratio * angle), radius * std::sin(ratio * angle), 0});
        twists.push_back(twist * ratio);
    }
    return PlacementsAlongCurve(points, {0, 0, 1}, twists);
}

std::vector<Station> Stations(CrossSection const& section, std::vector<Mat<4, double>> const& placements) {
    std::vector<Station> stations;
    for (auto const& placement : placements)
        stations.push_back({&section, placement});
    return stations;
}

/// Deeper and wider by the factor, under the same names.
CrossSections Scaled(shapes::Shape shape, double factor) {
    for (auto& [x, y] : shape.points)
        std::tie(x, y) = std::tuple(x * factor, y * factor);
    return MakeSet(shape);
}

/// The scene that an exporter takes.
std::unique_ptr<aiScene> SceneOf(TriangleMesh const& solid) {
    auto scene = std::make_unique<aiScene>();
    scene->mRootNode = new aiNode;
    scene->mRootNode->mNumMeshes = 1;
    scene->mRootNode->mMeshes = new unsigned[1]{0};
    scene->mNumMaterials = 1;
    scene->mMaterials = new aiMaterial* [1] { new aiMaterial };
    scene->mNumMeshes = 1;
    scene->mMeshes = new aiMesh* [1] { new aiMesh };
    std::vector<aiVector3D> points;
    for (auto const& point : solid.m_points)
        points.emplace_back(static_cast<float>(point[0]), static_cast<float>(point[1]),
                            static_cast<float>(point[2]));
    std::vector<std::vector<unsigned>> faces;
    for (std::size_t i = 0; i < solid.m_triangles.size(); i += 3)
        faces.push_back({solid.m_triangles[i], solid.m_triangles[i + 1], solid.m_triangles[i + 2]});
    meshes::Fill(*scene->mMeshes[0], points, faces);
    scene->mMeshes[0]->mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    return scene;
}

/// What admesh finds in a file, by its words; on Windows, which it is not built for, nothing.
std::string FaultsForAdmesh([[maybe_unused]] std::string const& path, [[maybe_unused]] std::size_t facets) {
    std::string faults;
#ifndef _WIN32
    std::map<std::string, double> counts; // of the original, where it gives two
    std::unique_ptr<FILE, int (*)(FILE*)> const output(popen(("admesh " + path).c_str(), "r"), &pclose);
    for (char line[300]; output && std::fgets(line, sizeof line, output.get());) {
        std::string const text(line);
        std::size_t const colon = text.find(':');
        if (colon != std::string::npos)
            counts[text.substr(0, text.find_last_not_of(' ', colon - 1) + 1)] = std::atof(text.c_str() + colon + 1);
    }
    if (counts["Number of facets"] != static_cast<double>(facets))
        faults += "other facets;";
    for (auto const* const key : {"Total disconnected facets", "Degenerate facets", "Edges fixed", "Facets removed",
                                  "Facets added", "Facets reversed", "Backwards edges"})
        if (counts.count(key) == 0 || counts[key] != 0)
            faults += std::string(key) + ";";
#endif
    return faults;
}

/// What others find in the file of a solid: empty for nothing.
std::string FaultsForOthers(Solid const& solid, std::string const& name) {
    if (!Faults(solid).empty())
        return Faults(solid);
    std::string const path = testing::TempDir() + name + ".stl";
    Assimp::Exporter exporter;
    if (exporter.Export(SceneOf(solid.m_mesh).get(), "stlb", path) != aiReturn_SUCCESS)
        return exporter.GetErrorString();
    auto faults = FaultsForAdmesh(path, solid.m_mesh.m_triangles.size() / 3);

    Assimp::Importer importer;
    auto const* const scene = importer.ReadFile(path, 0);
    Mesh mesh(L"", L"");
    Mat<4, double> const identity;
    mesh.fromOBJ(scene->mMeshes[0], Matrix{identity.m_elements.data()});
    if (Mesh(mesh, true).Positions().size() != solid.m_mesh.m_points.size())
        faults += "other positions;";
    std::remove(path.c_str());
    return faults;
}

/// The codes of what is in the way, at which station; without a mesh, as it must be.
std::string Refusal(std::vector<Station> const& stations) {
    auto const solid = Sweep(stations);
    std::string codes;
    for (auto const& finding : solid.m_findings)
        codes += (codes.empty() ? "" : " ") + finding.m_code + "@" + std::to_string(finding.m_section);
    return solid.m_mesh.m_points.empty() && solid.m_mesh.m_triangles.empty() ? codes : "a mesh, and " + codes;
}

} // namespace

TEST(Solids, PrismsOfSoundSectionsAreClosed) {
    shapes::Random random(16);
    std::vector<shapes::Shape> all{shapes::Girder(),
                                   shapes::NineGirder(),
                                   shapes::Comb(40),
                                   shapes::Spiral(60),
                                   shapes::Hilbert(4),
                                   shapes::LeaningComb(40),
                                   shapes::NotchedCircle(90),
                                   shapes::Plate(12, 1),
                                   shapes::Plate(1, 12),
                                   shapes::Plate(9, 9),
                                   shapes::Coast(random, 200, 30)};
    for (int cells = 1; cells <= 6; ++cells)
        all.push_back(shapes::Box(cells));
    all.push_back(BridgeOnBridge(1));
    for (int i = 0; i < 300; ++i)
        all.push_back(Turned(shapes::StarWithHoles(random, static_cast<std::size_t>(8 + shapes::Below(random, 40)),
                                                   static_cast<std::size_t>(i % 11),
                                                   static_cast<std::size_t>(3 + shapes::Below(random, 8))),
                             shapes::Uniform(random, 0.1, 1)));
    for (auto const& shape : all) {
        auto const set = MakeSet(shape);
        auto const& section = set.Items()[0];
        auto const solid = Prism(section, 7);
        EXPECT_EQ(Faults(solid), "") << shape.points.size();
        EXPECT_NEAR(Volume(solid.m_mesh) / (7 * Area(section)), 1, 1e-12);
        EXPECT_EQ(solid.m_mesh.m_points.size(), 2 * static_cast<std::size_t>(set.Positions().Count()));
    }
}

TEST(Solids, WhatTheCheckPassesIsClosedAndTheRestIsRefused) {
    shapes::Random random(8);
    int solids = 0, refused = 0;
    for (int round = 0; round < 4000; ++round) {
        auto shape = round % 4 == 0 ? shapes::Garbage(random, 4 + shapes::Below(random, 12), 6)
                                    : shapes::GridPlate(random, 2 + shapes::Below(random, 8));
        if (round % 4 == 2 && round < 400)
            shape = BridgeOnBridge(shapes::Uniform(random, 1, 2));
        if (round % 4 == 1) // so that rounding bends the straight corners
            shape = Turned(shape, 0.3);
        auto const set = MakeSet(shape);
        auto const& section = set.Items()[0];
        auto const check = CheckGeometry(section);
        auto const solid = Prism(section, 2);
        if (solid.m_findings.empty()) {
            ++solids;
            ASSERT_EQ(Faults(solid), "");
            ASSERT_FALSE(HasErrors(check));
            ASSERT_NEAR(Volume(solid.m_mesh) / (2 * Area(section)), 1, 1e-12);
            ASSERT_GT(LeastHeight(solid.m_mesh), 0.001);
        } else {
            ++refused;
            ASSERT_FALSE(check.empty()) << solid.m_findings[0].m_code;
            ASSERT_TRUE(solid.m_mesh.m_points.empty() && solid.m_mesh.m_triangles.empty());
        }
    }
    EXPECT_TRUE(solids > 500 && refused > 500) << solids << " " << refused;
}

TEST(Solids, BoundaryHasTheFeetWhereTheyLie) {
    // The left edge takes the feet of two holes, and the first hole that of a third.
    shapes::Shape shape;
    shape.AddLoop({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    shape.AddLoop({{2, 1}, {3, 1}, {4, 2}, {2, 3}}, true);
    shape.AddLoop({{2, 6}, {3, 5}, {3, 8}}, true);
    shape.AddLoop({{6, 1.5}, {7, 1}, {7, 2}}, true);
    auto const set = MakeSet(shape);
    auto const boundary = Boundary(set.Items()[0]);
    std::vector<std::vector<int>> const rings{{0, 1, 2, 3, 15, 14}, {7, 6, 16, 5, 4}, {10, 9, 8}, {13, 12, 11}};
    EXPECT_EQ(boundary.m_rings, rings) << testing::PrintToString(boundary.m_rings);
    // A foot at a corner is no new point.
    shapes::Shape corner;
    corner.AddLoop({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {-2, 5}});
    corner.AddLoop({{4, 4}, {6, 4}, {6, 7}, {4, 5}}, true);
    auto const cornerSet = MakeSet(corner);
    EXPECT_EQ(Boundary(cornerSet.Items()[0]).m_rings[0].size(), 5U);
    EXPECT_EQ(Faults(Prism(cornerSet.Items()[0], 1)), "");
}

TEST(Solids, BlendedGirderHasTheVolumeOfItsAreas) {
    auto const pier = Sample("haunched-box-pier.json"), midspan = Sample("haunched-box-midspan.json");
    double integral = 0.0; // by the rule of Simpson
    for (int i = 0; i <= 40; ++i)
        integral += (i % 40 == 0  ? 1
                     : i % 2 == 0 ? 2
                                  : 4) *
                    60 / 120.0 * Area(CrossSections(pier, midspan, i / 40.0, false).Items()[0]);
    double volumes[2] = {};
    for (std::size_t i = 0; i < 2; ++i) {
        Span const span(pier, midspan, PlacementsAlongLine({0, 0, 0}, {0, 60, 0}, 20 * (i + 1) + 1));
        EXPECT_EQ(Faults(span.m_solid), "");
        volumes[i] = Volume(span.m_solid.m_mesh);
    }
    // Sides that are not plane bend at a diagonal, which in half the length takes half as much.
    EXPECT_NEAR(volumes[1] / integral, 1, 2e-5);
    EXPECT_NEAR((2 * volumes[1] - volumes[0]) / integral, 1, 1e-9);

    // The documents themselves: in the second the loops begin elsewhere and the cells stand in the other order.
    Span const blended(pier, midspan, PlacementsAlongLine({0, 0, 0}, {0, 60, 0}, 2));
    auto const direct = Sweep({{&pier.Items()[0], Placement({0, 0, 0}, {0, 1, 0})},
                               {&midspan.Items()[0], Placement({0, 60, 0}, {0, 1, 0})}});
    EXPECT_EQ(Faults(direct), "");
    EXPECT_NEAR(Volume(direct.m_mesh), Volume(blended.m_solid.m_mesh), 1e-9);
    EXPECT_NEAR(SurfaceArea(direct.m_mesh), SurfaceArea(blended.m_solid.m_mesh), 1e-9);
}

TEST(Solids, SymmetricGirdersGiveSymmetricSolids) {
    auto const girder = MakeSet(shapes::Girder());
    auto haunched = shapes::Girder();
    for (auto& [x, y] : haunched.points)
        std::tie(x, y) = std::tuple(13 + (x - 13) * (1 + y / 100), y < 30 ? y - 20 : y);
    Span const span(girder, MakeSet(haunched), PlacementsAlongLine({0, 0, 0}, {0, 60, 0}, 4));
    EXPECT_EQ(Faults(span.m_solid), "");
    // Of each half, the volume: that of the solid with the points of the other half moved to the middle.
    double halves[2] = {};
    for (int side = 0; side < 2; ++side) {
        auto half = span.m_solid.m_mesh;
        for (auto& point : half.m_points)
            point[0] = side == 0 ? std::min(point[0], 13.0) : std::max(point[0], 13.0);
        halves[side] = Volume(half);
    }
    EXPECT_NEAR(halves[0], halves[1], 1e-9 * halves[0]);
}

TEST(Solids, CurvedGirdersAreClosedToOthersToo) {
    for (int cells = 1; cells <= 6; ++cells) {
        auto const set = MakeSet(shapes::Box(cells));
        auto const& section = set.Items()[0];
        // Sides between planes through one axis are plane, so the volume is exact. To the left, x points away from
        // the middle of the arc.
        auto const curved = Sweep(Stations(section, Arc(100, 1, 41)));
        double const middle = 100 + PropertiesOf(section).m_centroid[0];
        EXPECT_NEAR(Volume(curved.m_mesh) / (40 * std::sin(1.0 / 40) * middle * Area(section)), 1, 1e-12);
        EXPECT_EQ(FaultsForOthers(curved, "curved"), "") << cells;

        // Turned over its length, growing, and back to front.
        auto const large = Scaled(shapes::Box(cells), 1.5);
        Span const span(set, large, Arc(200, 0.7, 25, 0.3));
        EXPECT_EQ(FaultsForOthers(span.m_solid, "turned"), "") << cells;
        auto stations = Stations(section, Arc(150, -0.7, 25, 0.1));
        std::reverse(stations.begin(), stations.end());
        EXPECT_EQ(FaultsForOthers(Sweep(stations), "reversed"), "") << cells;
    }
    for (auto const* const name :
         {"i-girders-inches.json", "box-beam-inches.json", "voided-slab-inches.json", "t-girder-deck-inches.json",
          "pier-cap-inches.json", "tunnel-horseshoe.json", "box-girder-single-cell.json",
          "box-girder-three-cells.json", "culvert-millimetres.json", "haunched-box-pier.json"}) {
        auto const set = Sample(name);
        for (auto const& section : set.Items())
            EXPECT_EQ(FaultsForOthers(Prism(section, 100), "sample"), "") << name;
    }
}

TEST(Solids, PlacementsStandAcross) {
    // Ahead is y, so right is x; a twist raises the right side.
    auto const upright = Placement({1, 2, 3}, {0, 5, 0}, {0, 0, 2});
    EXPECT_EQ(upright.m_elements, (std::array<double, 16>{1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 1, 2, 3, 1}));
    auto const twisted = Placement({0, 0, 0}, {0, 1, 0}, {0, 0, 1}, 0.1);
    EXPECT_TRUE(std::abs(twisted[0] - std::cos(0.1)) < 1e-15 && std::abs(twisted[2] - std::sin(0.1)) < 1e-15);
    for (auto const& direction : {Vec<3, double>{0, 0, 0}, Vec<3, double>{1, 1, 1}, Vec<3, double>{NAN, 1, 0}})
        EXPECT_TRUE(std::isnan(Placement({0, 0, 0}, direction, {-0.3, -0.3, -0.3})[0]));
    EXPECT_TRUE(PlacementsAlongLine({0, 0, 0}, {1, 0, 0}, 1).empty() && PlacementsAlongCurve({{0, 0, 0}}).empty());
    // On a circle, at uneven distances, every station looks along the tangent, the ends too.
    std::vector<Vec<3, double>> points;
    std::vector<double> const angles{0.1, 0.25, 0.3, 0.7, 0.9};
    for (double const angle : angles)
        points.push_back({5 * std::cos(angle), 5 * std::sin(angle), 2});
    auto const placements = PlacementsAlongCurve(points);
    for (std::size_t i = 0; i < angles.size(); ++i) {
        EXPECT_NEAR(placements[i][0], std::cos(angles[i]), 1e-14);
        EXPECT_NEAR(placements[i][1], std::sin(angles[i]), 1e-14);
    }
}

TEST(Solids, WhatIsInTheWayIsTold) {
    auto const box = MakeSet(shapes::Box(2)), single = MakeSet(shapes::Box(1)), girder = MakeSet(shapes::Girder()),
               nine = MakeSet(shapes::NineGirder()), large = Scaled(shapes::Box(2), 2);
    auto const at = [](CrossSections const& set, double y) {
        return Station{&set.Items()[0], Placement({0, y, 0}, {0, 1, 0})};
    };
    auto mirrored = at(box, 10);
    for (std::size_t i = 0; i < 3; ++i)
        mirrored.m_placement[i] *= -1;
    auto nowhere = at(box, 10);
    nowhere.m_placement[13] = NAN;
    auto flat = at(box, 10);
    flat.m_placement[0] = 0;
    auto far = at(box, 10);
    far.m_placement[15] = 0;
    auto beyond = at(box, 10);
    beyond.m_placement[3] = 0.1; // points left of -2 lie behind the horizon
    auto const wide = MakeSet(shapes::Box(3));
    Station const sheared{&wide.Items()[0],
                          {{0.975292, 0.220921, 3, 0, 0.0592204, -0.261439, 0.963402, 0, 0, 0, 0, 0, 0, 5, 1, 1}}};
    auto perspective = at(box, 10);
    perspective.m_placement[3] = 0.01;
    beyond.m_placement[15] = 0.2;

    shapes::Shape bowTie, plain;
    bowTie.AddLoop({{0, 0}, {4, 4}, {4, 0}, {0, 3}});
    plain.AddLoop({{0, 0}, {4, 0}, {4, 4}, {0, 3}});
    auto const crossed = MakeSet(bowTie), square = MakeSet(plain);
    shapes::Shape touching;
    touching.points = {{0, 0}, {9, 0}, {9, 9}, {0, 9}, {2, 2}, {3, 3}, {2, 4}, {4, 2}, {4, 4}};
    touching.loops = {{0, 1, 2, 3}, {6, 5, 4}, {8, 7, 5}};
    auto const shared = MakeSet(touching);
    shapes::Shape fewer = shapes::Girder();
    fewer.loops[0].erase(fewer.loops[0].begin() + 3);
    auto edited = MakeSet(shapes::Girder());
    edited.GetItems()[0].ConvexLoops();
    edited.GetItems()[0].GetExteriorLoop().RemoveVertex(3);
    auto const eleven = MakeSet(fewer);

    std::tuple<char const*, std::vector<Station>> const cases[] = {
        {"too-few-stations@-1", {at(box, 0)}},
        {"station-without-section@1", {at(box, 0), {}}},
        {"other-number-of-loops@1", {at(box, 0), at(single, 1), at(box, 2)}},
        {"other-number-of-vertices@1", {at(girder, 0), at(nine, 1)}},
        {"placement-not-finite@1", {at(box, 0), nowhere}},
        {"placement-not-finite@1", {at(box, 0), far}},
        {"placement-not-finite@1", {at(box, 0), beyond}},
        {"stations-not-in-order@1", {at(box, 0), flat}},
        {"stations-not-in-order@1", {at(box, 0), mirrored}},
        {"stations-not-in-order@1", {at(box, 3), at(box, 3)}},
        {"stations-not-in-order@1", {at(box, 3), at(box, 3 + 1e-11)}},
        {"stations-not-in-order@2", {at(box, 0), at(large, 3), at(box, 2)}},
        {"stations-not-in-order@-1", {at(wide, 0), sheared}},
        {"stations-not-in-order@1", Stations(box.Items()[0], Arc(2, 1, 10))},
        {"edges-cross@0", {at(crossed, 0), at(crossed, 1)}},
        {"edges-cross@1", {at(square, 0), at(crossed, 1), at(square, 2)}},
        {"convex-loop-not-convex@0 position-used-twice@0", {at(shared, 0), at(shared, 1)}},
        {"loops-not-of-the-section@1", {at(eleven, 0), at(edited, 1)}},
    };
    for (auto const& [codes, stations] : cases)
        EXPECT_EQ(Refusal(stations), codes);

    EXPECT_EQ(Faults(Sweep({at(box, 0), perspective})), "");

    // Names that do not line up, and that do with every loop begun elsewhere.
    auto const named = [](std::vector<std::string> const& names) {
        CSPositions pool;
        double const corners[][2] = {{0, 0}, {4, 0}, {4, 3}, {0, 3}};
        for (std::size_t i = 0; i < 4; ++i)
            pool.AddPosition(names[i], {corners[i][0], corners[i][1]});
        return CrossSections(pool, true);
    };
    auto const first = named({"a", "b", "c", "d"}), other = named({"a", "c", "b", "d"}),
               turned = named({"d", "a", "b", "c"});
    EXPECT_EQ(Refusal({at(first, 0), at(other, 1)}), "names-do-not-line-up@1");
    auto const twisted = Sweep({at(first, 0), at(turned, 9)});
    EXPECT_EQ(Faults(twisted), "");
    EXPECT_NEAR(Volume(twisted.m_mesh), 108, 1e-12); // the shorter diagonals are upright
    EXPECT_EQ(twisted.m_mesh.m_points[4][0], 4);     // where the second section has its "a"
    EXPECT_NEAR(Volume(Sweep({at(first, 0), at(named({"", "", "", ""}), 9)}).m_mesh), 108, 1e-12);
}

TEST(Solids, MeshesThatAreNotClosed) {
    TriangleMesh tetrahedron{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0, 3}};
    EXPECT_TRUE(IsClosed(tetrahedron));
    EXPECT_NEAR(Volume(tetrahedron), 1 / 6.0, 1e-16);
    EXPECT_NEAR(SurfaceArea(tetrahedron), 1.5 + std::sqrt(3) / 2, 1e-15);
    for (auto const& triangles : std::vector<std::vector<std::uint32_t>>{{},
                                                                         {0, 2, 1, 0, 1, 3, 1, 2, 3},
                                                                         {0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 3, 0},
                                                                         {0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0},
                                                                         {0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0, 4},
                                                                         {0, 1, 1},
                                                                         {0, 1, 2, 0, 2, 1, 0, 1, 2, 0, 2, 1}}) {
        tetrahedron.m_triangles = triangles;
        EXPECT_FALSE(IsClosed(tetrahedron)) << triangles.size();
        EXPECT_LT(std::abs(Volume(tetrahedron)), 1);
    }
}
