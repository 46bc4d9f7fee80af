# Makes a header of the report's page. A string literal has a limit to its length, an array of
# characters has none.
#
# usage: cmake -D PAGE=report.html -D HEADER=reportpage.h -P embedpage.cmake
file(READ "${PAGE}" page HEX)
if(page STREQUAL "")
    message(FATAL_ERROR "${PAGE} is empty")
endif()
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," page "${page}")
file(WRITE "${HEADER}"
    "// Made from the page by embedpage.cmake.\n"
    "namespace quillet::migrate {\n"
    "constexpr char kReportPage[] = {\n${page}\n};\n"
    "}  // namespace quillet::migrate\n")
