# The libraries that a host may supply instead, as targets of the same names.
find_package(simdjson REQUIRED)
sectrix_library(ORL_Json
    interfaces/dom.cpp
    interfaces/dom_reader_json.cpp
    interfaces/dom_writer_json.cpp)
target_link_libraries(ORL_Json PRIVATE simdjson::simdjson)
