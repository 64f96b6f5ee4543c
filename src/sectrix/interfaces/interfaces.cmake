# The libraries that a host may supply instead, as targets of the same names.
find_package(simdjson REQUIRED)
sectrix_library(ORL_Json
    interfaces/detail/dom_memory.cpp
    interfaces/dom.cpp
    interfaces/dom_reader_json.cpp
    interfaces/dom_writer_json.cpp
    HEADERS
    foundation/export.h
    interfaces/dom.h
    interfaces/dom_reader_json.h
    interfaces/dom_writer_json.h
    NEEDS simdjson::simdjson)

find_package(SQLite3 REQUIRED)
sectrix_library(GvsWrap
    interfaces/gvs.cpp
    interfaces/sqlite/guard.cpp
    interfaces/sqlite/kept_table.cpp
    interfaces/sqlite/statement.cpp
    HEADERS
    foundation/export.h
    interfaces/gvs.h
    NEEDS SQLite::SQLite3)
sectrix_library(MVQ
    interfaces/db_table.cpp
    HEADERS
    foundation/export.h
    interfaces/db_table.h
    NEEDS SQLite::SQLite3)
target_link_libraries(MVQ PUBLIC GvsWrap)
