# Packages, made by cpack: quillet, libquilletN and libquillet-dev for Debian, an archive for other
# Linux systems, a folder for Windows. `scripts/package` makes and names them all.

set(CPACK_PACKAGE_VENDOR "The quillet authors")
set(CPACK_PACKAGE_CONTACT "The quillet authors <quillet@quillet.example>"
    CACHE STRING "Who answers for the packages: a name and an address")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
# Access rights do not depend on who builds.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/package-times.cmake)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/package-contents.cmake)

if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME quillet-${PROJECT_VERSION}-windows-x64)
    include(CPack)
    return()
endif()

set(CPACK_GENERATOR "TGZ;DEB")
string(TOLOWER "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" system)
set(CPACK_PACKAGE_FILE_NAME quillet-${PROJECT_VERSION}-${system})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME quillet)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION math)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION
"Old files of statistical command syntax hold TABLES and IGRAPH commands that
no longer run. quillet reads such a file and writes it again, with each of
these commands commented out and followed by its replacement. Everything else
stays as it is, to the byte.")

set(shared_package libquillet${QUILLET_SOVERSION})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${shared_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION
"The conversions of the program quillet as a library for C++: text in, text
out, without touching a file or the console. Programs that use it need this
package.")
# Which version a program needs that is linked with it, and that the loader gets to know of it.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    ${PROJECT_SOURCE_DIR}/packaging/debian/symbols ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libquillet-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${shared_package} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"The conversions of the program quillet as a library for C++: text in, text
out, without touching a file or the console. This package holds the header,
the static library, and files that tell CMake and pkg-config how to use them.")

# What the packages of Debian hold in their own form. Compressed without names and times.
find_program(GZIP gzip)
if(GZIP)
    configure_file(packaging/debian/changelog.in ${PROJECT_BINARY_DIR}/debian/changelog.Debian @ONLY)
    function(install_compressed source name folder component)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
        execute_process(COMMAND ${GZIP} -9nc ${source}
            OUTPUT_FILE ${PROJECT_BINARY_DIR}/debian/${component}/${name}.gz
            COMMAND_ERROR_IS_FATAL ANY)
        install(FILES ${PROJECT_BINARY_DIR}/debian/${component}/${name}.gz
            DESTINATION ${folder} COMPONENT ${component} EXCLUDE_FROM_ALL)
    endfunction()
    foreach(package_and_component "quillet debian" "${shared_package} debian_library"
            "libquillet-dev debian_development")
        separate_arguments(pair UNIX_COMMAND ${package_and_component})
        list(GET pair 0 package)
        list(GET pair 1 component)
        file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/debian/${component})
        set(folder ${CMAKE_INSTALL_DATADIR}/doc/${package})
        install_compressed(${PROJECT_BINARY_DIR}/debian/changelog.Debian changelog.Debian
            ${folder} ${component})
        install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog ${folder} ${component})
        install(FILES packaging/debian/copyright DESTINATION ${folder}
            COMPONENT ${component} EXCLUDE_FROM_ALL)
    endforeach()
    install_compressed(${PROJECT_SOURCE_DIR}/docs/quillet.1 quillet.1
        ${CMAKE_INSTALL_MANDIR}/man1 debian)
    if(TARGET quillet-migrate)
        install_compressed(${PROJECT_SOURCE_DIR}/docs/quillet-migrate.1 quillet-migrate.1
            ${CMAKE_INSTALL_MANDIR}/man1 debian)
    endif()
    # Where Debian's zsh looks.
    install(FILES completions/_quillet DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions
        COMPONENT debian EXCLUDE_FROM_ALL)
endif()

include(CPack)
cpack_add_component_group(program)
cpack_add_component_group(library)
cpack_add_component_group(development)
cpack_add_component(program GROUP program)
cpack_add_component(debian GROUP program)
cpack_add_component(library GROUP library)
cpack_add_component(debian_library GROUP library)
cpack_add_component(development GROUP development)
cpack_add_component(debian_development GROUP development)
