# Gives everything in a package the time that SOURCE_DATE_EPOCH names, so that packages of the same
# source are the same; run by cpack when it has put the files in place.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(
        COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch -h -d @$ENV{SOURCE_DATE_EPOCH} {} +
        COMMAND_ERROR_IS_FATAL ANY)
endif()
