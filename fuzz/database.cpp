#include "sectrix/interfaces/db_table.h"
#include "sectrix/interfaces/gvs.h"
#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/obj.h"
#include "target.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <sqlite3.h>
#include <vector>

using namespace qel::Sectrix;

namespace fuzz {

namespace {

/// What an operation gives; where it raised, the reason.
struct Outcome {
    std::string m_text;
    bool m_isRaised = false;
};

template <class Operation>
Outcome Run(Operation const& operation) {
    try {
        return {operation()};
    } catch (std::exception const& error) { // also for want of memory: a file may honestly ask for too much
        return {error.what(), true};
    }
}

template <class Record>
Outcome Pull(Record const& record, gvs::Database& database) {
    std::string out = "old";
    auto const outcome = Run([&] { return record.PullDataFromSourceRecord(&database, out), out; });
    Require(!outcome.m_isRaised || out == "old", "a failed pull leaves everything as it was");
    return outcome;
}

int const kPulls = 12;

/// One of the pulls, by its number.
Outcome PullOne(gvs::Database& database, std::size_t number) {
    auto const* guid = number < kPulls / 2 ? L"a" : L"b";
    int const index = std::array<int, 3>{0, 1, -7}[number / 2 % 3];
    if (number % 2 == 0)
        return Pull(AcisGeometry({}, L"Pier", L"p", guid, {}, index, {}), database);
    return Pull(Obj(index, {}, {}, {}, {}, guid, {}), database);
}

std::vector<Outcome> PullAll(gvs::Database& database) {
    std::vector<Outcome> outcomes;
    for (std::size_t number = 0; number < kPulls; ++number)
        outcomes.push_back(PullOne(database, number));
    return outcomes;
}

/// Of a broken file SQLite may see more at the second look.
void RequireSame(Outcome const& first, Outcome const& second, char const* what) {
    Require(first.m_isRaised || second.m_isRaised || first.m_text == second.m_text, what);
}

/// Writes into the first row of each table.
std::vector<Outcome> StoreAll(gvs::Database& database) {
    std::vector<Outcome> outcomes;
    for (auto const* name : {L"SAT_GEOMETRIES", L"SAT_DEFINITIONS", L"MESHES", L"MESH_DEFINITIONS"})
        outcomes.push_back(Run([&] {
            mvq::DbTable table(&database, name);
            table.querySequential(nullptr, nullptr, true);
            bool const isThere = table.readNext();
            if (isThere)
                table.setBlob(L"DATA", "a", 1);
            return std::string(isThere ? "stored" : "no row");
        }));
    return outcomes;
}

} // namespace

std::string RunDatabase(std::string const& bytes) {
    auto const path = OwnFile();
    std::ofstream(path, std::ios::binary) << bytes;
    std::string text;
    auto const add = [&text](std::vector<Outcome> const& outcomes) {
        for (auto const& [what, isRaised] : outcomes)
            text += (isRaised ? "! " : "") + what + '\n';
    };
    sqlite3* connection = nullptr;
    sqlite3_open_v2(path.c_str(), &connection, SQLITE_OPEN_READWRITE, nullptr);
    {
        gvs::Database opened(path);
        auto const first = PullAll(opened);
        auto const again = PullAll(opened);
        for (std::size_t i = 0; i < first.size(); ++i)
            RequireSame(first[i], again[i], "the same pull again");
        add(first);
        // What a handle of the library's own refuses is for the host to bound on a connection that it lends.
        gvs::Database borrowed(connection);
        for (std::size_t i = 0; i < first.size(); ++i)
            if (!first[i].m_isRaised)
                RequireSame(first[i], PullOne(borrowed, i), "the same pull on a borrowed connection");
    }
    Require(sqlite3_close(connection) == SQLITE_OK, "nothing stays on a borrowed connection");
    {
        gvs::Database writable(path, gvs::Database::Access::ReadWrite);
        add(StoreAll(writable));
        add(PullAll(writable));
    }
    std::remove(path.c_str());
    return text;
}

} // namespace fuzz
