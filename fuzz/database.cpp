#include "sectrix/interfaces/db_table.h"
#include "sectrix/interfaces/gvs.h"
#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/obj.h"
#include "target.h"

#include <fstream>
#include <sqlite3.h>
#include <unistd.h>
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

std::vector<Outcome> PullAll(gvs::Database& database) {
    std::vector<Outcome> outcomes;
    for (auto const* guid : {L"a", L"b"})
        for (int index : {0, 1, -7}) {
            outcomes.push_back(Pull(AcisGeometry({}, L"Pier", L"p", guid, {}, index, {}), database));
            outcomes.push_back(Pull(Obj(index, {}, {}, {}, {}, guid, {}), database));
        }
    return outcomes;
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
    {
        gvs::Database opened(path);
        auto const first = PullAll(opened);
        auto const again = PullAll(opened);
        // Of a broken file SQLite may see more at the second look.
        for (std::size_t i = 0; i < first.size(); ++i)
            Require(first[i].m_isRaised || again[i].m_isRaised || first[i].m_text == again[i].m_text,
                    "the same pull again");
        add(first);
    }
    {
        gvs::Database writable(path, gvs::Database::Access::ReadWrite);
        add(StoreAll(writable));
    }
    sqlite3* connection = nullptr;
    sqlite3_open_v2(path.c_str(), &connection, SQLITE_OPEN_READWRITE, nullptr);
    // The host that lends the connection bounds what it does itself.
    sqlite3_progress_handler(
        connection, 1000000, [](void*) { return 1; }, nullptr);
    {
        gvs::Database borrowed(connection);
        add(PullAll(borrowed));
    }
    Require(sqlite3_close(connection) == SQLITE_OK, "nothing stays on a borrowed connection");
    unlink(path.c_str());
    return text;
}

} // namespace fuzz
