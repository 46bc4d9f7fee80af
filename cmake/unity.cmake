# Builds that only test compile several sources at once, which takes a third of the time: most of it
# goes into headers and templates that each source would meet again. What belongs to one source alone
# must then have a name that no other source of the target uses. The compiler says so.
#
# unite(TARGET): prepares a target; it is built so where UNITY_BUILD is set, which CMAKE_UNITY_BUILD
# does for all of them.
function(unite target)
    # Each source gives its own name to assertions.
    set_target_properties(${target} PROPERTIES
        UNITY_BUILD_UNIQUE_ID QUILLET_SOURCE
        UNITY_BUILD_CODE_BEFORE_INCLUDE
"#define QUILLET_JOIN(name, source) name##_##source
#define QUILLET_OWN(name, source) QUILLET_JOIN(name, source)
#define kModule QUILLET_OWN(kModule, QUILLET_SOURCE)")
endfunction()
