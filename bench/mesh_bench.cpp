#include "seconds.h"
#include "support/meshes.h"

#include <algorithm>
#include <array>
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <benchmark/benchmark.h>
#include <limits>
#include <meshoptimizer.h>
#include <numeric>
#include <stdexcept>

/// \file
/// The merging copy against the joins of meshoptimizer and Assimp and by size, and the import against a plain loop.

using namespace qel;
using namespace qel::Sectrix;
using meshes::Lattice;

namespace {

Lattice const kScattered{{0, 0, 0}, {0.001, 0.001, 0.001}, {100000, 100000, 100000}};
constexpr double kNever = std::numeric_limits<double>::max();

/// Random points of a lattice, `copies` of each, shuffled, and triangles over all of them in their order.
Mesh Soup(Lattice const& lattice, int count, int copies) {
    shapes::Random random(7);
    meshes::Positions positions;
    for (auto const& point : lattice.Points(random, (count + copies - 1) / copies))
        positions.insert(positions.end(), static_cast<std::size_t>(copies), point);
    positions.resize(static_cast<std::size_t>(count));
    for (int i = count - 1; i > 0; --i)
        std::swap(positions[static_cast<std::size_t>(i)],
                  positions[static_cast<std::size_t>(shapes::Below(random, i + 1))]);
    meshes::Indices indices(positions.size() / 3 * 3);
    std::iota(indices.begin(), indices.end(), 0);
    return meshes::MakeMesh(positions, indices);
}

/// The same for a host: coordinates become floats.
void Fill(aiMesh& target, Mesh const& mesh) {
    std::vector<aiVector3D> vertices;
    for (auto const& position : mesh.Positions())
        vertices.emplace_back(static_cast<float>(position.X()), static_cast<float>(position.Y()),
                              static_cast<float>(position.Z()));
    std::vector<std::vector<unsigned>> faces(mesh.Indices().size() / 3);
    auto corner = mesh.Indices().begin();
    for (auto& face : faces) {
        face.assign(corner, corner + 3);
        corner += 3;
    }
    meshes::Fill(target, vertices, faces);
}

/// Joins in place, so that each time needs a scene of its own, which is made outside the measured time.
double SecondsOfAssimp(Mesh const& mesh, std::size_t& left) {
    char const stub[] = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
    Assimp::Importer importer;
    aiScene const* const scene = importer.ReadFileFromMemory(stub, sizeof stub - 1, 0, "obj");
    if (!scene || scene->mNumMeshes != 1)
        throw std::runtime_error(importer.GetErrorString());
    aiMesh& target = *scene->mMeshes[0];
    delete[] target.mVertices;
    delete[] target.mFaces;
    Fill(target, mesh);
    double const seconds = ProcessorSeconds([&] { importer.ApplyPostProcessing(aiProcess_JoinIdenticalVertices); });
    left = target.mNumVertices;
    return seconds;
}

void InTurns(benchmark::internal::Benchmark* measured) {
    measured->Iterations(15)->UseManualTime()->Unit(benchmark::kMillisecond);
}

/// The merging copy and the joins of its peers in turn; the ratios are those of the best times.
void MergeBesidePeers(benchmark::State& state) {
    Mesh const mesh = Soup(kScattered, static_cast<int>(state.range(0)), 6);
    std::vector<unsigned> const indices(mesh.Indices().begin(), mesh.Indices().end());
    std::vector<unsigned> remap(mesh.Positions().size());
    double best = kNever, bestOfMeshopt = kNever, bestOfAssimp = kNever;
    std::size_t kept = 0, leftByMeshopt = 0, leftByAssimp = 0;
    for (auto _ : state) {
        double const seconds = ProcessorSeconds([&] { kept = Mesh(mesh, true).Positions().size(); });
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        bestOfMeshopt = std::min(bestOfMeshopt, ProcessorSeconds([&] {
                                     leftByMeshopt = meshopt_generateVertexRemap(
                                         remap.data(), indices.data(), indices.size(), mesh.Positions().data(),
                                         remap.size(), sizeof(Position));
                                 }));
        bestOfAssimp = std::min(bestOfAssimp, SecondsOfAssimp(mesh, leftByAssimp));
    }
    state.counters["kept"] = static_cast<double>(kept);
    state.counters["left_by_meshopt"] = static_cast<double>(leftByMeshopt);
    state.counters["left_by_assimp"] = static_cast<double>(leftByAssimp);
    state.counters["best_ms"] = best * 1e3;
    state.counters["to_meshopt"] = best / bestOfMeshopt;
    state.counters["to_assimp"] = best / bestOfAssimp;
}
BENCHMARK(MergeBesidePeers)->Arg(30000)->Arg(1000000)->Apply(InTurns);

/// 100,000 and 1,000,000 positions in turn, of a lattice and with `copies` of each; `growth` is the ratio of
/// the best times.
void MergeGrowth(benchmark::State& state, Lattice const& lattice, int copies) {
    Mesh const small = Soup(lattice, 100000, copies), large = Soup(lattice, 1000000, copies);
    double best = kNever, bestOfLarge = kNever;
    std::size_t kept = 0;
    for (auto _ : state) {
        for (int i = 0; i < 10; ++i)
            best = std::min(best, ProcessorSeconds([&] { kept = Mesh(small, true).Positions().size(); }));
        double const seconds = ProcessorSeconds([&] { kept = Mesh(large, true).Positions().size(); });
        state.SetIterationTime(seconds);
        bestOfLarge = std::min(bestOfLarge, seconds);
    }
    state.counters["kept"] = static_cast<double>(kept);
    state.counters["ms_100k"] = best * 1e3;
    state.counters["ms_1m"] = bestOfLarge * 1e3;
    state.counters["growth"] = bestOfLarge / best;
}

BENCHMARK_CAPTURE(MergeGrowth, Scattered, kScattered, 6)->Apply(InTurns);
BENCHMARK_CAPTURE(MergeGrowth, Distinct, kScattered, 1)->Apply(InTurns);
BENCHMARK_CAPTURE(MergeGrowth, Flat, Lattice{{0, 0, 5}, {0.001, 0.001, 0.001}, {100000, 100000, 1}}, 6)
    ->Apply(InTurns);
BENCHMARK_CAPTURE(MergeGrowth, OnALine, Lattice{{5, 5, 0}, {0.001, 0.001, 0.001}, {1, 1, 10000000}}, 6)
    ->Apply(InTurns);
BENCHMARK_CAPTURE(MergeGrowth, Far,
                  Lattice{{1e300, -1e300, 1e300}, {1e290, 1e290, 1e290}, {100000, 100000, 100000}}, 6)
    ->Apply(InTurns);
BENCHMARK_CAPTURE(MergeGrowth, InCloseRows, Lattice{{0, 0, 0}, {0.00009, 0.00009, 0.00009}, {20, 20, 20}}, 6)
    ->Apply(InTurns);
BENCHMARK_CAPTURE(MergeGrowth, NotFinite, Lattice{{0, 0, 0}, {0.001, 0.001, 0.001}, {100000, 100000, 100000}, 3}, 6)
    ->Apply(InTurns);

/// What a host would write instead of `fromOBJ`.
void AppendByHand(aiMesh const& source, Mat<4, double> const& m) {
    std::vector<std::array<double, 3>> positions;
    meshes::Indices indices;
    positions.reserve(source.mNumVertices);
    indices.reserve(std::size_t{3} * source.mNumFaces);
    for (unsigned i = 0; i < source.mNumVertices; ++i) {
        double const x = source.mVertices[i].x, y = source.mVertices[i].y, z = source.mVertices[i].z;
        double const q = 1 / (x * m[3] + y * m[7] + z * m[11] + m[15]);
        positions.push_back({(x * m[0] + y * m[4] + z * m[8] + m[12]) * q,
                             (x * m[1] + y * m[5] + z * m[9] + m[13]) * q,
                             (x * m[2] + y * m[6] + z * m[10] + m[14]) * q});
    }
    for (unsigned i = 0; i < source.mNumFaces; ++i)
        for (unsigned corner = 0; corner < 3; ++corner)
            indices.push_back(source.mFaces[i].mIndices[corner]);
    benchmark::DoNotOptimize(positions.data());
    benchmark::DoNotOptimize(indices.data());
}

/// The import of 1,000,000 vertices and the loop in turn; `ratio` is that of the best times.
void ImportBesideLoop(benchmark::State& state) {
    aiMesh source;
    Fill(source, Soup(kScattered, 1000000, 6));
    Mat<4, double> matrix;
    matrix[0] = matrix[5] = 0.8;
    matrix[1] = 0.6;
    matrix[4] = -0.6;
    matrix[12] = 1000;
    double best = kNever, bestOfLoop = kNever;
    for (auto _ : state) {
        double const seconds =
            ProcessorSeconds([&] { Mesh(L"key", L"name").fromOBJ(&source, Matrix{matrix.m_elements.data()}); });
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        bestOfLoop = std::min(bestOfLoop, ProcessorSeconds([&] { AppendByHand(source, matrix); }));
    }
    state.counters["best_ms"] = best * 1e3;
    state.counters["ratio"] = best / bestOfLoop;
}
BENCHMARK(ImportBesideLoop)->Apply(InTurns);

} // namespace
