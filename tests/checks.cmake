# The scripts that check what no test of the programs does, as tests: "quick" ones, and others.
#
# add_check(NAME LABEL [LOCKS FOLDER...] [AFTER NAME] [PROCESSORS N] [COST N]) for scripts/check-NAME.
# Two that build in the same folder of build/ must not do so at once: LOCKS. Those of a high COST, in
# seconds, begin first. A script that finds that something cannot be had here says
# "NAME: SKIPPED, ..." and succeeds.
function(add_check name label)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "AFTER;PROCESSORS;COST" "LOCKS")
    add_test(NAME check.${name} COMMAND ${PROJECT_SOURCE_DIR}/scripts/check-${name}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    set_tests_properties(check.${name} PROPERTIES LABELS ${label} TIMEOUT 7200
        SKIP_REGULAR_EXPRESSION "${name}: SKIPPED, ")
    set_property(TEST check.${name} PROPERTY RESOURCE_LOCK ${arg_LOCKS})
    foreach(property PROCESSORS COST)
        if(arg_${property})
            set_property(TEST check.${name} PROPERTY ${property} ${arg_${property}})
        endif()
    endforeach()
    if(arg_AFTER)
        set_property(TEST check.${name} PROPERTY DEPENDS check.${arg_AFTER})
    endif()
endfunction()

add_check(sources quick)
add_check(manual quick)
add_check(format quick)
add_check(scripts quick)

add_check(parser check)
add_check(tidy check LOCKS debug PROCESSORS 2 COST 500)
add_check(abi check)
add_check(page check LOCKS page)
add_check(report check LOCKS page)
add_check(work check LOCKS release)
add_check(consumer check LOCKS release COST 300)
add_check(windows check LOCKS windows COST 400)
# The package for Windows needs the compiler that the check for Windows installs.
add_check(packages check LOCKS release windows AFTER windows)
add_check(release check LOCKS release windows AFTER packages)
discover_pytest(completion completion_test.py)
discover_pytest(counting counting_test.py)
