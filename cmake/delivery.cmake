# How the program is compiled for delivery, on top of what every build has: hardened, and the same
# to the byte wherever it is built. To be included where quillet_settings exists.

include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# Names of folders must not get into the result. Where lines are counted they have to be found again.
if(NOT QUILLET_COVERAGE)
    target_compile_options(quillet_settings INTERFACE
        -ffile-prefix-map=${PROJECT_BINARY_DIR}=build
        -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
endif()
# Nor must times, owners and access rights, which archives of object files hold by default.
set(CMAKE_CXX_ARCHIVE_CREATE "<CMAKE_AR> qcD <TARGET> <LINK_FLAGS> <OBJECTS>")
set(CMAKE_CXX_ARCHIVE_APPEND "<CMAKE_AR> qD <TARGET> <LINK_FLAGS> <OBJECTS>")
set(CMAKE_CXX_ARCHIVE_FINISH "<CMAKE_RANLIB> -D <TARGET>")

# Debug builds are left out: the checked library functions need an optimizing compiler, and the
# sanitizers bring their own checks.
set(hardening -fstack-protector-strong)
if(WIN32)
    # Named when linking as well, for the library that holds the check.
    set(hardened_link -static -fstack-protector-strong -Wl,--no-insert-timestamp -Wl,--dynamicbase -Wl,--nxcompat
        -Wl,--high-entropy-va)
else()
    list(APPEND hardening -fstack-clash-protection
        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    set(hardened_link -Wl,-z,relro -Wl,-z,now)
endif()
target_compile_options(quillet_settings INTERFACE
    "$<$<AND:$<CONFIG:Release>,${is_tested}>:${hardening}>")
target_link_options(quillet_settings INTERFACE "$<$<CONFIG:Release>:${hardened_link}>")
