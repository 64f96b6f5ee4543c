# The flags of every target of this project, and of no one else's: nothing here is global.
add_library(sectrix_flags INTERFACE)
target_compile_features(sectrix_flags INTERFACE cxx_std_17)
target_compile_options(sectrix_flags INTERFACE
    # Sums and products are rounded one by one, so that every compiler and machine gives the same bits.
    $<$<CXX_COMPILER_ID:GNU,Clang>:-ffp-contract=off>)
if(ORL_SECTRIX_STRICT)
    target_compile_options(sectrix_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
endif()
if(ORL_SECTRIX_SANITIZE)
    target_compile_options(sectrix_flags INTERFACE
        -fsanitize=${ORL_SECTRIX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(sectrix_flags INTERFACE -fsanitize=${ORL_SECTRIX_SANITIZE})
endif()

# sectrix_library(name SOURCES ... ) makes a shared library of ours: hidden symbols, a version, the namespaced alias.
function(sectrix_library name)
    add_library(${name} SHARED ${ARGN})
    add_library(ORL_Sectrix::${name} ALIAS ${name})
    target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:sectrix_flags>)
    # A library's calls of its own exported functions are bound to them, and may be inlined.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU,Clang>:-fno-semantic-interposition>)
    target_compile_features(${name} PUBLIC cxx_std_17)
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src> $<INSTALL_INTERFACE:include>)
    set_target_properties(${name} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR})
    if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
        # Keeps what the compiler instantiates from the standard library out of the export list.
        target_link_options(${name} PRIVATE
            LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
        set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    endif()
endfunction()
