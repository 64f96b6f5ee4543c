# What `cmake --install` puts down: a runtime component with the libraries, a development component with the headers, the
# packages for CMake and pkg-config, and the guides. Everything refers to everything else by relative paths, so an
# installed copy may be moved.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

get_property(SECTRIX_LIBRARIES GLOBAL PROPERTY SECTRIX_LIBRARIES)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ORL_Sectrix)
install(TARGETS ${SECTRIX_LIBRARIES} EXPORT ORL_SectrixTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT ORL_SectrixTargets NAMESPACE ORL_Sectrix:: DESTINATION ${package_dir} COMPONENT development)

set(generated ${PROJECT_BINARY_DIR}/package)
configure_package_config_file(cmake/package/ORL_SectrixConfig.cmake.in ${generated}/ORL_SectrixConfig.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${generated}/ORL_SectrixConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${generated}/ORL_SectrixConfig.cmake ${generated}/ORL_SectrixConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT development)

list(REVERSE SECTRIX_LIBRARIES) # what needs another one stands before it
list(TRANSFORM SECTRIX_LIBRARIES PREPEND -l OUTPUT_VARIABLE SECTRIX_PC_LIBS)
list(JOIN SECTRIX_PC_LIBS " " SECTRIX_PC_LIBS)
file(RELATIVE_PATH SECTRIX_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig/. /.)
configure_file(cmake/package/ORL_Sectrix.pc.in ${generated}/ORL_Sectrix.pc @ONLY)
install(FILES ${generated}/ORL_Sectrix.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# Not CMAKE_INSTALL_DOCDIR: as a part of a host's build that may be the host's.
set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/ORL_Sectrix)
install(FILES README.md CHANGELOG.md DESTINATION ${doc_dir} COMPONENT development)
install(DIRECTORY docs DESTINATION ${doc_dir} COMPONENT development
    FILES_MATCHING PATTERN *.md PATTERN *.svg PATTERN *.schema.json)
