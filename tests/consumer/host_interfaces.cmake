# A host's own ORL_Json, GvsWrap and MVQ: static, and with classes of another layout than the bundled ones, so that the
# library works only where it was compiled against these headers.
set(host ${CMAKE_BINARY_DIR}/host)
file(GLOB_RECURSE sources RELATIVE ${SECTRIX_SOURCE}/src/sectrix/interfaces
    ${SECTRIX_SOURCE}/src/sectrix/interfaces/*.h ${SECTRIX_SOURCE}/src/sectrix/interfaces/*.cpp)
foreach(source ${sources})
    file(READ ${SECTRIX_SOURCE}/src/sectrix/interfaces/${source} text)
    string(REGEX REPLACE "(class SECTRIX_EXPORT (Dom|Database|DbTable) {\n)" "\\1    int m_ofTheHost[64] = {};\n" text "${text}")
    file(CONFIGURE OUTPUT ${host}/sectrix/interfaces/${source} CONTENT "${text}" @ONLY)
endforeach()

function(host_library name)
    list(TRANSFORM ARGN PREPEND ${host}/sectrix/interfaces/)
    add_library(${name} STATIC ${ARGN})
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_compile_features(${name} PUBLIC cxx_std_17)
    target_include_directories(${name} PUBLIC ${host} PRIVATE ${SECTRIX_SOURCE}/src)
endfunction()

find_package(simdjson REQUIRED)
host_library(ORL_Json dom.cpp dom_reader_json.cpp dom_writer_json.cpp)
target_link_libraries(ORL_Json PRIVATE simdjson::simdjson)

find_package(SQLite3 REQUIRED)
host_library(GvsWrap gvs.cpp sqlite/statement.cpp)
target_link_libraries(GvsWrap PRIVATE SQLite::SQLite3)
host_library(MVQ db_table.cpp)
target_link_libraries(MVQ PUBLIC GvsWrap PRIVATE SQLite::SQLite3)
