# What is installed, and where, by components:
#
#   program      the programs with their completions, documents and examples
#   upstream     what a Debian package holds in a form of its own: manual pages, licenses, changes
#   library      what a program needs that is linked with the shared library
#   development  what is needed to link with the library: headers and the static library
#   debian...    that form, for each of the packages; nothing else has it

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

if(WIN32)
    # A folder to be unpacked anywhere.
    set(CMAKE_INSTALL_BINDIR .)
    set(CMAKE_INSTALL_DOCDIR .)
endif()

install(TARGETS quillet RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program
    FILES_MATCHING PATTERN "*.md" PATTERN "*.schema.json" PATTERN "*.syn" PATTERN "*.png")
install(FILES LICENSE CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT upstream)
# It names the licenses of what is compiled in, too.
install(FILES packaging/debian/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT upstream)

if(WIN32)
    # The program holds the compiler's own libraries as well.
    install(FILES /usr/share/doc/mingw-w64-common/copyright RENAME copyright-mingw-w64
        DESTINATION . COMPONENT upstream)
    find_program(MANDOC mandoc)
    if(MANDOC)
        execute_process(COMMAND ${MANDOC} -T html ${PROJECT_SOURCE_DIR}/docs/quillet.1
            OUTPUT_FILE ${PROJECT_BINARY_DIR}/quillet.html COMMAND_ERROR_IS_FATAL ANY)
        install(FILES ${PROJECT_BINARY_DIR}/quillet.html DESTINATION . COMPONENT upstream)
    else()
        message(STATUS "mandoc is missing: the manual is not made into a web page")
    endif()
    return()
endif()

install(FILES docs/quillet.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT upstream)
if(TARGET quillet-migrate)
    install(TARGETS quillet-migrate RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
    install(FILES docs/quillet-migrate.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT upstream)
endif()
install(FILES completions/quillet.bash RENAME quillet
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT program)
install(FILES completions/quillet.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT program)
install(FILES completions/_quillet
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT upstream)

install(TARGETS quillet_static EXPORT quillet
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(TARGETS quillet_shared EXPORT quillet LIBRARY
    DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development)
install(FILES ctables/quillet/quillet.h ctables/quillet/quillet_export.h
    ctables/quillet/quillet-messages.def ctables/quillet/quillet-findings.def
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/quillet)
install(EXPORT quillet NAMESPACE quillet:: FILE quilletTargets.cmake
    DESTINATION ${package_folder} COMPONENT development)
if(BUILD_SHARED_LIBS)
    set(default_library shared)
else()
    set(default_library static)
endif()
configure_package_config_file(cmake/quilletConfig.cmake.in
    ${PROJECT_BINARY_DIR}/quilletConfig.cmake INSTALL_DESTINATION ${package_folder})
# Until version 1 a new minor version may break what uses the library.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/quilletConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/quilletConfig.cmake ${PROJECT_BINARY_DIR}/quilletConfigVersion.cmake
    DESTINATION ${package_folder} COMPONENT development)

# Relative to the file itself, so that an unpacked archive works wherever it lies.
file(RELATIVE_PATH prefix_from_pkgconfig
    /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/libquillet.pc.in ${PROJECT_BINARY_DIR}/libquillet.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/libquillet.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
