# Makes one page of its three parts: the style and the script take the places of the comments that
# name them. A page that fetches nothing has to bring along everything.
#
# usage: cmake -D PARTS=page -D PAGE=report.html -P joinpage.cmake
file(READ "${PARTS}/report.html" page)
foreach(part report.css report.js)
    file(READ "${PARTS}/${part}" text)
    set(mark "/* ${part} */\n")
    string(FIND "${page}" "${mark}" place)
    if(place EQUAL -1 OR text STREQUAL "")
        message(FATAL_ERROR "${PARTS}/${part} is empty, or has no place in report.html")
    endif()
    string(REPLACE "${mark}" "${text}" page "${page}")
endforeach()
file(WRITE "${PAGE}" "${page}")
