# The target docs: API pages from the public headers and docs/, in the build folder's docs/html. It fails on a warning,
# and something public that is not documented is one.
find_program(DOXYGEN doxygen)
if(DOXYGEN)
    get_property(libraries GLOBAL PROPERTY SECTRIX_LIBRARIES)
    set(SECTRIX_PUBLIC_HEADERS "")
    foreach(library ${libraries})
        get_target_property(headers ${library} HEADER_SET)
        get_target_property(folder ${library} SOURCE_DIR)
        list(TRANSFORM headers PREPEND ${folder}/ REGEX "^[^/]")
        list(APPEND SECTRIX_PUBLIC_HEADERS ${headers})
    endforeach()
    list(REMOVE_DUPLICATES SECTRIX_PUBLIC_HEADERS)
    list(JOIN SECTRIX_PUBLIC_HEADERS " " SECTRIX_PUBLIC_HEADERS)
    configure_file(docs/Doxyfile.in ${PROJECT_BINARY_DIR}/docs/Doxyfile @ONLY)
    add_custom_target(docs COMMAND ${DOXYGEN} ${PROJECT_BINARY_DIR}/docs/Doxyfile
        COMMENT "API pages: ${PROJECT_BINARY_DIR}/docs/html/index.html" VERBATIM)
endif()
