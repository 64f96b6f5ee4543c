# Debian packages of what cmake/install.cmake puts down: `cpack` in the build folder. For the project's own build only,
# since a host that packages itself has settings of its own.
set(ORL_SECTRIX_PACKAGE_CONTACT "The ORL_Sectrix developers <orl-sectrix@localhost>" CACHE STRING
    "Whom the packages name as their maintainer")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "${ORL_SECTRIX_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
# Our libraries need each other; without this the packager looks for one of them in other packages.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src/sectrix ${PROJECT_BINARY_DIR}/src/sectrix_tools)

set(soversion ${PROJECT_VERSION_MAJOR})
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME liborl-sectrix${soversion})
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "This package has the shared libraries, which a host needs to run.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liborl-sectrix-dev)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "This package has what building a host takes: headers, guides, packages for CMake and pkg-config.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "liborl-sectrix${soversion} (= ${PROJECT_VERSION}), libsimdjson-dev, libsqlite3-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS libassimp-dev) # for hosts that call Mesh::fromOBJ

if(ORL_SECTRIX_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL tools_runtime tools_development)
    set(CPACK_DEBIAN_TOOLS_RUNTIME_PACKAGE_NAME liborl-sectrix-tools${soversion})
    set(CPACK_DEBIAN_TOOLS_RUNTIME_DESCRIPTION "This package has the shared library of the tools, such as the checks.")
    set(CPACK_DEBIAN_TOOLS_RUNTIME_PACKAGE_DEPENDS "liborl-sectrix${soversion} (= ${PROJECT_VERSION})")
    set(CPACK_DEBIAN_TOOLS_RUNTIME_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_TOOLS_RUNTIME_PACKAGE_GENERATE_SHLIBS ON)
    set(CPACK_DEBIAN_TOOLS_DEVELOPMENT_PACKAGE_NAME liborl-sectrix-tools-dev)
    set(CPACK_DEBIAN_TOOLS_DEVELOPMENT_DESCRIPTION
        "This package has what building a host with the tools takes: headers, packages for CMake and pkg-config.")
    set(CPACK_DEBIAN_TOOLS_DEVELOPMENT_PACKAGE_SECTION libdevel)
    set(CPACK_DEBIAN_TOOLS_DEVELOPMENT_PACKAGE_DEPENDS
        "liborl-sectrix-tools${soversion} (= ${PROJECT_VERSION}), liborl-sectrix-dev (= ${PROJECT_VERSION})")
endif()
if(ORL_SECTRIX_COMMAND)
    list(APPEND CPACK_COMPONENTS_ALL command)
    set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME sectrix)
    set(CPACK_DEBIAN_COMMAND_DESCRIPTION "This package has the program, its manual pages and its completion for bash.")
    set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION science)
    set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "liborl-sectrix-tools${soversion} (= ${PROJECT_VERSION})")
    set(CPACK_DEBIAN_COMMAND_PACKAGE_SHLIBDEPS ON)
endif()
include(CPack)
