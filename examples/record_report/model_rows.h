#pragma once

/// \file
/// The host's own side of the model database: its connection, and the records that it fills by its own SQL.

#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/obj.h"

#include <memory>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace example {

using Connection = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

/// Opens a database for reading. Throws std::runtime_error with the path and SQLite's reason.
Connection Open(std::string const& path);

/// True when the table refers to definitions by GUID, false when its rows hold their data themselves.
bool HasDefinitions(sqlite3* connection, std::string const& table);

/// A record for each row of "SAT_GEOMETRIES", in the order of their row ids. Throws std::runtime_error as `Open`.
std::vector<qel::Sectrix::AcisGeometry> ReadGeometries(sqlite3* connection);

/// A record for each row of "MESHES", in the order of their row ids. Throws std::runtime_error as `Open`.
std::vector<qel::Sectrix::Obj> ReadMeshes(sqlite3* connection);

} // namespace example
