# The first program in README.md is built from there and must print what stands there.

# Puts the first fenced block of README.md with this language into a variable of the caller.
function(readme_block language result)
    file(READ ${PROJECT_SOURCE_DIR}/README.md text)
    string(FIND "${text}" "```${language}\n" start)
    if(start EQUAL -1)
        message(FATAL_ERROR "README.md has no block of ${language}")
    endif()
    string(SUBSTRING "${text}" ${start} -1 text)
    string(FIND "${text}" "\n" start)
    math(EXPR start "${start} + 1")
    string(SUBSTRING "${text}" ${start} -1 text)
    string(FIND "${text}" "```" end)
    string(SUBSTRING "${text}" 0 ${end} text)
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/README.md)
readme_block(cpp program)
readme_block(text output)
file(CONFIGURE OUTPUT readme_program.cpp CONTENT "${program}" @ONLY)
file(CONFIGURE OUTPUT readme_output.txt CONTENT "${output}" @ONLY)

add_executable(readme_program ${CMAKE_CURRENT_BINARY_DIR}/readme_program.cpp)
target_link_libraries(readme_program PRIVATE ORL_Sectrix::ORL_Sectrix sectrix_flags)
add_test(NAME readme_program
         COMMAND sh -c "\"$1\" | diff \"$2\" -" sh $<TARGET_FILE:readme_program>
                 ${CMAKE_CURRENT_BINARY_DIR}/readme_output.txt)
