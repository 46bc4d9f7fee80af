# Which components go into which kind of package; read by cpack for each of them.
if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_COMPONENTS_ALL program debian library debian_library
        development debian_development)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
else()
    # One archive that unpacks into one folder.
    set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
    set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
    set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
    set(CPACK_COMPONENTS_ALL program upstream)
    if(CPACK_GENERATOR STREQUAL "TGZ")
        list(APPEND CPACK_COMPONENTS_ALL library development)
    endif()
endif()
