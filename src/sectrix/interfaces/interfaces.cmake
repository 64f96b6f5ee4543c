# The libraries that a host may supply instead, as targets of the same names.
find_package(simdjson REQUIRED)
sectrix_library(ORL_Json
    interfaces/dom.cpp
    interfaces/dom_reader_json.cpp
    interfaces/dom_writer_json.cpp
    HEADERS
    foundation/export.h
    interfaces/dom.h
    interfaces/dom_reader_json.h
    interfaces/dom_writer_json.h)
target_link_libraries(ORL_Json PRIVATE simdjson::simdjson)
