# What `cmake --install` puts down: the library with its guides, the tools, and the program. Each library has a runtime
# component with what is loaded and a development component with headers and the packages for CMake and pkg-config.
# Everything refers to everything else by relative paths, so an installed copy may be moved.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(generated ${PROJECT_BINARY_DIR}/package)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ORL_Sectrix)
configure_package_config_file(cmake/package/ORL_SectrixConfig.cmake.in ${generated}/ORL_SectrixConfig.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${generated}/ORL_SectrixConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${generated}/ORL_SectrixConfig.cmake ${generated}/ORL_SectrixConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT development)

# What a static host links besides, and how it knows that our libraries are static.
if(NOT BUILD_SHARED_LIBS)
    set(SECTRIX_PC_DEFINITION " -DSECTRIX_STATIC")
    set(SECTRIX_PC_NEEDS "-lsimdjson -lsqlite3 -lstdc++ -lm")
endif()

# install_libraries(name prefix LIBRARIES target... REQUIRES name...): libraries that a host takes together, as the
# pkg-config file `name` and the targets file `name`Targets, in the components `prefix`runtime and `prefix`development.
# A library that needs another one stands behind it; REQUIRES names other pkg-config files.
function(install_libraries name prefix)
    cmake_parse_arguments(SECTRIX_PC "" "DESCRIPTION" "LIBRARIES;REQUIRES" ${ARGN})
    install(TARGETS ${SECTRIX_PC_LIBRARIES} EXPORT ${name}Targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${prefix}runtime NAMELINK_COMPONENT ${prefix}development
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${prefix}runtime # libraries of Windows
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${prefix}development
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT ${prefix}development)
    install(EXPORT ${name}Targets NAMESPACE ORL_Sectrix:: DESTINATION ${package_dir}
        COMPONENT ${prefix}development)

    list(REVERSE SECTRIX_PC_LIBRARIES)
    list(TRANSFORM SECTRIX_PC_LIBRARIES PREPEND -l OUTPUT_VARIABLE SECTRIX_PC_LIBS)
    list(JOIN SECTRIX_PC_LIBS " " SECTRIX_PC_LIBS)
    file(RELATIVE_PATH SECTRIX_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig/. /.)
    configure_file(cmake/package/package.pc.in ${generated}/${name}.pc @ONLY)
    install(FILES ${generated}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT ${prefix}development)
endfunction()

get_property(libraries GLOBAL PROPERTY SECTRIX_LIBRARIES)
list(REMOVE_ITEM libraries ORL_SectrixTools)
install_libraries(ORL_Sectrix "" LIBRARIES ${libraries} DESCRIPTION "${PROJECT_DESCRIPTION}")
if(ORL_SECTRIX_TOOLS)
    install_libraries(ORL_SectrixTools tools_ LIBRARIES ORL_SectrixTools REQUIRES "ORL_Sectrix = ${PROJECT_VERSION}"
        DESCRIPTION "Checks, properties, drawings and solids of sections")
endif()

if(ORL_SECTRIX_COMMAND)
    file(RELATIVE_PATH to_libraries /${CMAKE_INSTALL_BINDIR}/. /${CMAKE_INSTALL_LIBDIR})
    set_property(TARGET sectrix PROPERTY INSTALL_RPATH $ORIGIN/${to_libraries})
    install(TARGETS sectrix RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT command)
    get_target_property(pages sectrix SECTRIX_MANUAL_PAGES)
    install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT command)
    install(FILES command/completion.bash DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions
        RENAME sectrix COMPONENT command)
endif()

if(ORL_SECTRIX_PYTHON)
    set(ORL_SECTRIX_PYTHON_DIR lib/python3/dist-packages CACHE STRING "Where Python packages are installed")
    file(RELATIVE_PATH to_libraries /${ORL_SECTRIX_PYTHON_DIR}/sectrix /${CMAKE_INSTALL_LIBDIR})
    set_property(TARGET sectrix_core PROPERTY INSTALL_RPATH $ORIGIN/${to_libraries})
    install(TARGETS sectrix_core LIBRARY DESTINATION ${ORL_SECTRIX_PYTHON_DIR}/sectrix COMPONENT python)
    install(DIRECTORY python/sectrix DESTINATION ${ORL_SECTRIX_PYTHON_DIR} COMPONENT python
        FILES_MATCHING PATTERN *.py PATTERN *.pyi PATTERN py.typed PATTERN __pycache__ EXCLUDE)
endif()

# Not CMAKE_INSTALL_DOCDIR: as a part of a host's build that may be the host's.
set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/ORL_Sectrix)
install(FILES README.md CHANGELOG.md DESTINATION ${doc_dir} COMPONENT development)
install(DIRECTORY docs DESTINATION ${doc_dir} COMPONENT development
    FILES_MATCHING PATTERN *.md PATTERN *.svg PATTERN *.schema.json)
