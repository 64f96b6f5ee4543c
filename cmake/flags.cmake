# The flags of every target of this project, and of no one else's: nothing here is global.
add_library(sectrix_flags INTERFACE)
target_compile_features(sectrix_flags INTERFACE cxx_std_17)
target_compile_options(sectrix_flags INTERFACE
    # Sums and products are rounded one by one, so that every compiler and machine gives the same bits.
    $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-ffp-contract=off>
    # Standard C++ in UTF-8, and large object files, which the header-only libraries need.
    "$<$<CXX_COMPILER_ID:MSVC>:/fp:precise;/utf-8;/permissive-;/EHsc;/bigobj>")
if(MSVC)
    target_compile_definitions(sectrix_flags INTERFACE NOMINMAX _CRT_SECURE_NO_WARNINGS)
endif()
if(ORL_SECTRIX_STRICT)
    target_compile_options(sectrix_flags INTERFACE
        "$<IF:$<CXX_COMPILER_ID:MSVC>,/W4;/WX,-Wall;-Wextra;-Wpedantic;-Wshadow;-Wconversion;-Werror>")
endif()
if(ORL_SECTRIX_SANITIZE)
    target_compile_options(sectrix_flags INTERFACE
        -fsanitize=${ORL_SECTRIX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(sectrix_flags INTERFACE -fsanitize=${ORL_SECTRIX_SANITIZE})
endif()

# Headers that the build writes.
set(SECTRIX_GENERATED ${PROJECT_BINARY_DIR}/generated)
configure_file(cmake/version.h.in ${SECTRIX_GENERATED}/sectrix/version.h @ONLY)

# Shared, unless somebody says otherwise. In this folder alone: a host's own libraries are the host's.
if(NOT DEFINED BUILD_SHARED_LIBS)
    set(BUILD_SHARED_LIBS ON)
endif()

# sectrix_library(name source... HEADERS header... NEEDS target...) makes a library of ours: hidden symbols, a version,
# the namespaced alias. HEADERS are the public ones, which are installed; all others are private. NEEDS are libraries of
# the system that it calls and no header of it includes: a host has to find them only where it links ours statically.
function(sectrix_library name)
    cmake_parse_arguments(library "" "" "HEADERS;NEEDS" ${ARGN})
    add_library(${name} ${library_UNPARSED_ARGUMENTS})
    if(BUILD_SHARED_LIBS)
        list(TRANSFORM library_NEEDS REPLACE "(.+)" "$<BUILD_INTERFACE:\\1>")
    else()
        target_compile_definitions(${name} PUBLIC SECTRIX_STATIC)
        set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON) # for a host's shared library
    endif()
    target_link_libraries(${name} PRIVATE ${library_NEEDS})
    target_sources(${name} PUBLIC FILE_SET HEADERS
        BASE_DIRS ${PROJECT_SOURCE_DIR}/src ${SECTRIX_GENERATED} FILES ${library_HEADERS})
    set_property(GLOBAL APPEND PROPERTY SECTRIX_LIBRARIES ${name})
    add_library(ORL_Sectrix::${name} ALIAS ${name})
    target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:sectrix_flags>)
    # A library's calls of its own exported functions are bound to them, and may be inlined.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU,Clang>:-fno-semantic-interposition>)
    target_compile_features(${name} PUBLIC cxx_std_17)
    set_target_properties(${name} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        INSTALL_RPATH $ORIGIN # our libraries find each other wherever an installed copy is moved
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR})
    if(BUILD_SHARED_LIBS AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
        # Keeps what the compiler instantiates from the standard library out of the export list.
        target_link_options(${name} PRIVATE
            LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
        set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    endif()
endfunction()

# The headers of a host's own interface libraries come before the bundled ones of the same names.
function(sectrix_prefer_host_interfaces name)
    if(NOT ORL_SECTRIX_BUNDLED_INTERFACES)
        foreach(library ORL_Json GvsWrap MVQ)
            target_include_directories(${name} BEFORE PUBLIC $<TARGET_PROPERTY:${library},INTERFACE_INCLUDE_DIRECTORIES>)
        endforeach()
    endif()
endfunction()
