#include "sectrix/interfaces/gvs.h"
#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/obj.h"
#include "target.h"

#include <fstream>
#include <sqlite3.h>
#include <unistd.h>

using namespace qel::Sectrix;

namespace fuzz {

namespace {

/// What a pull gives; or the reason why there is nothing, once it has kept what there was.
template <class Record>
std::string Pull(Record const& record, gvs::Database& database) {
    std::string out = "old";
    try {
        record.PullDataFromSourceRecord(&database, out);
    } catch (gvs::Error const& error) {
        Require(out == "old", "a failed pull leaves everything as it was");
        return std::string("! ") + error.what();
    }
    return out;
}

std::string PullAll(gvs::Database& database) {
    std::string text;
    for (auto const* guid : {L"a", L"b"})
        for (int index : {0, 1, -7}) {
            text += Pull(AcisGeometry({}, L"Pier", L"p", guid, {}, index, {}), database) + '\n';
            text += Pull(Obj(index, {}, {}, {}, {}, guid, {}), database) + '\n';
        }
    return text;
}

} // namespace

std::string RunDatabase(std::string const& bytes) {
    auto const path = OwnFile();
    std::ofstream(path, std::ios::binary) << bytes;
    std::string text;
    {
        gvs::Database opened(path);
        text = PullAll(opened);
        // Of a broken file SQLite may see more at the second look.
        auto const again = PullAll(opened);
        Require(again == text || (again + text).find("! ") != std::string::npos, "the same pulls again");
    }
    sqlite3* connection = nullptr;
    sqlite3_open_v2(path.c_str(), &connection, SQLITE_OPEN_READWRITE, nullptr);
    {
        gvs::Database borrowed(connection);
        text += PullAll(borrowed);
    }
    Require(sqlite3_close(connection) == SQLITE_OK, "nothing stays on a borrowed connection");
    unlink(path.c_str());
    return text;
}

} // namespace fuzz
