# Makes CTest know each test function of a file for pytest. Read by ctest when it starts, with these
# variables set:
#
#     pytest       the program
#     file         the file with the tests
#     prefix       what their names begin with; also their label
#     environment  for the tests: NAME=VALUE, a list
#
# A function with parameters is one test here; pytest runs its rows, and names those that fail.
execute_process(COMMAND ${pytest} --collect-only -q ${file}
    WORKING_DIRECTORY ${CMAKE_CURRENT_LIST_DIR}/..
    OUTPUT_VARIABLE found ERROR_VARIABLE problems RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "${pytest} cannot read ${file}:\n${found}${problems}")
endif()
# Rows stand in brackets, which separate no lists.
string(REGEX REPLACE "\\[[^\n]*" "" found "${found}")
string(REGEX MATCHALL "::[A-Za-z0-9_:]+" found "${found}")
list(REMOVE_DUPLICATES found)
foreach(test IN LISTS found)
    string(REGEX REPLACE "^::" "" name "${test}")
    string(REPLACE "::" "." name "${name}")
    add_test(${prefix}.${name} ${pytest} -q --no-header --tb=short ${file}${test})
    set_tests_properties(${prefix}.${name} PROPERTIES
        LABELS ${prefix} ENVIRONMENT "${environment}" SKIP_REGULAR_EXPRESSION "\n[0-9]+ skipped in ")
endforeach()
