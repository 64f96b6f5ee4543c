#include "support/meshes.h"
#include "support/plain_merging.h"

#include <gtest/gtest.h>
#include <tuple>

using namespace qel;
using namespace qel::Sectrix;
using namespace meshes;
using plain::Holds;
using shapes::Below;

namespace {

/// Positions in rows closer than the tolerance, just as close or not quite, across the borders of cells, and where
/// doubles are farther apart; often flat, and some with coordinates that are not finite.
Mesh RandomMesh(shapes::Random& random) {
    double const bases[] = {0, -3, 0x1p-12, 0x1p38, -0x1p40, 0x1p40, 0x1p41, -0x1p94, 0x1p94, 1e300, -1.7e308};
    double const steps[] = {0.0001, 0.00009, 0.00003, 0x1p-12, 0x1.fffffp-14, 0.01};
    Lattice lattice;
    for (int axis = 0; axis < 3; ++axis) {
        lattice.base[axis] = bases[Below(random, 11) * Below(random, 2)];
        lattice.step[axis] = steps[Below(random, 6)];
        lattice.extent[axis] = 1 + Below(random, 12) * Below(random, 2);
    }
    lattice.oddities = Below(random, 4) == 0 ? 2 + Below(random, 40) : 0;
    auto const positions = lattice.Points(random, Below(random, Below(random, 2) ? 300 : 24));
    Indices indices;
    for (std::size_t i = 0; i < 2 * positions.size(); ++i)
        indices.push_back(Below(random, static_cast<int>(positions.size()) + 2) +
                          (Below(random, 20) == 0 ? std::int64_t{1} << (31 + Below(random, 2)) : 0));
    return MakeMesh(positions, indices);
}

} // namespace

TEST(Mesh, MergingCopyIsThePlainOne) {
    shapes::Random random(4);
    // All but the first break one rule: a judge that never says no to them is no judge.
    plain::Merging const plain[] = {
        {}, {std::nextafter(1e-8, 1)}, {1e-8, false}, {1e-8, true, false}, {1e-8, true, true, false}};
    int refusals[5] = {};
    for (int round = 0; round < 1500; ++round) {
        Mesh const mesh = RandomMesh(random);
        for (int i = 0; i < (round < 200 ? 5 : 1); ++i)
            refusals[i] += !plain[i].Agrees(mesh);
    }
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(refusals[i] > 0, i > 0) << i;
}

TEST(Mesh, MergingCopyOfFew) {
    Position const a = At(0), b = At(0.00007), c = At(0.00014), d = At(0.0001), e = At(9);
    std::tuple<Positions, Indices, Positions, Indices> const cases[] = {
        {{}, {0, 1, 2}, {}, {}},
        {{a, b, c}, {}, {}, {}},
        {{a, a, e}, {0, 1, 2}, {a, e}, {0, 0, 1}},
        {{a, d, b}, {2, 1, 0}, {a, d}, {0, 1, 0}},
        {{e, a, b, c}, {2, 3, 9, 3}, {b}, {0, 0, 0}},
        {{a, e, c}, {0x100000001, 2, 0xFFFFFFFF, 0}, {a, e, c}, {2, 0}}};
    for (auto const& [positions, indices, merged, mergedIndices] : cases)
        EXPECT_TRUE(Holds(Mesh(MakeMesh(positions, indices), true), merged, mergedIndices));
}

TEST(Mesh, ImportAppendsTrianglesUnderTheMatrix) {
    aiMesh source;
    Fill(source, {{1, 2, 3}, {0.1f, 0, -4}}, {{0, 0, ~0u}, {1, 0, ~0u, 1}, {2, 0}, {3, 0, ~0u}});
    Mat<4, double> matrix;
    matrix[13] = 10;
    matrix[15] = 2;
    Mesh mesh(L"key", L"name");
    mesh.fromOBJ(&source, Matrix{mesh.Transform().m_elements.data()});
    EXPECT_TRUE(Holds(mesh, {At(1, 2, 3), At(0.1f, 0, -4)}, {0, 0, ~0u, 3, 0, ~0u}));
    EXPECT_TRUE(mesh.Positions().capacity() == 2 && mesh.Indices().capacity() == 12);
    mesh.fromOBJ(&source, Matrix{matrix.m_elements.data()});
    Positions const both{At(1, 2, 3), At(0.1f, 0, -4), At(0.5, 6, 1.5), At(0.1f / 2.0, 5, -2)};
    EXPECT_TRUE(Holds(mesh, both, {0, 0, ~0u, 3, 0, ~0u, 0, 0, ~0u, 3, 0, ~0u}));
    Mesh third = mesh;
    third.fromOBJ(&source, Matrix{matrix.m_elements.data()});
    EXPECT_TRUE(third.Positions().capacity() == 6 && mesh.Indices().capacity() == 18);
    Mesh const merged(mesh, true);
    EXPECT_EQ(merged.Transform().m_elements, matrix.m_elements);
    EXPECT_EQ(merged.Key() + merged.Name(), L"keyname");
    Mesh taken(std::move(mesh));
    Mesh(L"", L"") = std::move(taken);
    EXPECT_EQ(mesh.Transform().m_elements, matrix.m_elements);
    EXPECT_EQ(taken.Transform().m_elements, matrix.m_elements);
}

TEST(Mesh, BoundingBoxTakesInWhatIsNotANumber) {
    Position min = At(7, 7, 7), max = min;
    EXPECT_TRUE(!MakeMesh({}, {0}).BoundingBox(min, max) && max.X() == 7);
    EXPECT_TRUE(MakeMesh({At(1, 2, -3)}, {}).BoundingBox(min, max));
    EXPECT_TRUE(Holds(MakeMesh({min, max}, {}), {At(1, 2, -3), At(1, 2, -3)}, {}));
    EXPECT_TRUE(MakeMesh({At(1, 9, NAN), At(NAN, 2, 5), At(4, NAN, 6)}, {}).BoundingBox(min, max));
    EXPECT_TRUE(Holds(MakeMesh({min, max}, {}), {At(4, NAN, 5), At(4, NAN, 6)}, {}));
}

TEST(Mesh, CopiesAndMoves) {
    Mesh source = MakeMesh({At(1), At(1), At(2)}, {0, 1, 7});
    auto const isWhole = [](Mesh const& mesh) {
        return Holds(mesh, {At(1), At(1), At(2)}, {0, 1, 7}) && mesh.Key() == L"key" && mesh.Name() == L"name";
    };
    auto& self = source;
    auto const parts = [&] {
        return std::make_tuple(source.Positions().data(), source.Indices().data(), &source.Key()[0],
                               &source.Name()[0]);
    };
    auto const before = parts();
    source = self;
    source = std::move(self);
    EXPECT_EQ(parts(), before); // whoever refers to a part of it still does
    Mesh taken(Mesh(source, false));
    EXPECT_TRUE(isWhole(source) && isWhole(taken));
    source = std::move(taken);
    EXPECT_TRUE(isWhole(source) && Holds(taken, {}, {}) && taken.Key().empty() && taken.Name().empty());
    EXPECT_TRUE(isWhole(Mesh(std::move(source))) && Holds(source, {}, {}) && source.Key().empty());
}

TEST(Position, TransformsInOrderAndIsNearBelowTheTolerance) {
    Mat<4, double> matrix;
    matrix[4] = 1e16;
    matrix[0] = -1e16;
    matrix[12] = 5;
    matrix[15] = 3;
    Position const position(1, 1, 1, Matrix{matrix.m_elements.data()});    // ((1e16 - 1e16) + 0) + 5, all over 3
    EXPECT_TRUE(position.X() == 5 * (1.0 / 3) && position.X() != 5 / 3.0); // the division is made once
    matrix[15] = 0;
    EXPECT_EQ(Position(1, 1, 0, Matrix{matrix.m_elements.data()}).Y(), INFINITY);
    EXPECT_TRUE(At(0).Near(At(-0.00009)) && At(0).Near(At(NAN)) && Position().Near(Position()));
    EXPECT_FALSE(At(0).Near(At(0, 0.0001)) || At(0).Near(At(0, 0.00008, 0.00007)) || At(0).Near(Position()));
    EXPECT_TRUE(At(0, -INFINITY).IsValid() && !At(0, NAN).IsValid());
    EXPECT_FALSE(At(INFINITY).IsValid() || At(0, INFINITY).IsValid() || At(0, 0, INFINITY).IsValid());
    EXPECT_EQ(At(1, 2, 3).Distance2(At(3, -1, 9)), 49);
}
