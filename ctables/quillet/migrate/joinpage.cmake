# Makes one page of its parts: the style and the script take the places of the comments that name
# them, for a page that fetches nothing has to bring along everything. Into the script go the names of
# the reasons why commands fail, with the headings that people see, from the list of messages, and the
# advice on each, from the list of hints. What the script has of its own about findings and reasons, the
# minutes that they usually take, is held against the list of findings and that of messages.
#
# usage: cmake -D PARTS=page -D MESSAGES=quillet-messages.def -D HINTS=quillet-hints.def
#     -D FINDINGS=quillet-findings.def -D PAGE=report.html -P joinpage.cmake

# Puts `text`, which must not be empty, in place of the line `mark` of the page.
function(put_in_place mark text)
    string(FIND "${page}" "${mark}" place)
    if(place EQUAL -1 OR text STREQUAL "")
        message(FATAL_ERROR "Nothing is to be put in place of ${mark}, or the page does not have it")
    endif()
    string(REPLACE "${mark}" "${text}" page "${page}")
    set(page "${page}" PARENT_SCOPE)
endfunction()

file(READ "${PARTS}/report.html" page)
foreach(part report.css report.js)
    file(READ "${PARTS}/${part}" text)
    put_in_place("/* ${part} */\n" "${text}")
endforeach()

# Of QUILLET_..._REASON(kind, "name", "message", "heading") each becomes a row; the rest goes.
file(READ "${MESSAGES}" reasons)
string(REGEX REPLACE "(//|#)[^\n]*\n" "\n" reasons "${reasons}")
set(literals "[ \n]*(\"[^\"]*\"[ \n]*)+")
string(REGEX REPLACE "QUILLET_WARNING\\([A-Za-z]+,${literals}\\)" "" reasons "${reasons}")
string(REGEX REPLACE
    "QUILLET_([A-Z]+_)?REASON\\([A-Za-z]+,[ \n]*(\"[^\"]*\"),${literals},[ \n]*(\"[^\"]*\")\\)"
    "    [\\2, \\4],\n" reasons "${reasons}")
string(REGEX REPLACE "\n\n+" "\n" reasons "${reasons}")
string(REGEX REPLACE "^\n" "" reasons "${reasons}")
if(NOT reasons MATCHES "^(    \\[\"[a-z-]+\", \"[^\"\\\n]+\"\\],\n)+$")
    message(FATAL_ERROR "${MESSAGES} has a row that is not understood:\n${reasons}")
endif()
put_in_place("    /* reasons */\n" "${reasons}")

# The same of QUILLET_ADVICE("name", "advice"), whose advice may be several literals in a row. Advice
# has no comma before a new literal, and a list of CMake no semicolons, so those are put aside.
file(READ "${HINTS}" hints)
string(REPLACE ";" "@semicolon@" hints "${hints}")
string(REGEX REPLACE "(//|#)[^\n]*\n" "\n" hints "${hints}")
string(REGEX REPLACE "\"[ \n]*\n[ \n]*\"" "" hints "${hints}")
string(REGEX MATCHALL "QUILLET_ADVICE\\(\"[a-z-]+\",[^\"]*\"[^\"]+\"\\)" rows "${hints}")
string(REGEX MATCHALL "QUILLET_ADVICE\\(" begun "${hints}")
list(LENGTH rows count)
list(LENGTH begun wanted)
if(NOT count EQUAL wanted OR count EQUAL 0)
    message(FATAL_ERROR "${HINTS} has ${wanted} pieces of advice, ${count} are understood")
endif()
set(advice "")
foreach(row IN LISTS rows)
    string(REGEX REPLACE "QUILLET_ADVICE\\((\"[a-z-]+\"),[^\"]*(\"[^\"]+\")\\)" "    [\\1, \\2],\n"
        row "${row}")
    string(APPEND advice "${row}")
endforeach()
string(REPLACE "@semicolon@" ";" advice "${advice}")
put_in_place("    /* advice */\n" "${advice}")

# Every finding has its minutes, and minutes are of nothing else than findings and reasons.
file(READ "${FINDINGS}" findings)
string(REGEX MATCHALL "QUILLET_FINDING\\(k[A-Za-z]+, \"[a-z-]+\"" wanted "${findings}")
list(TRANSFORM wanted REPLACE ".*\"([a-z-]+)\"" "\\1")
string(REGEX MATCHALL "\"finding\\.[a-z-]+\":" given "${page}")
list(TRANSFORM given REPLACE "\"finding\\.([a-z-]+)\":" "\\1")
list(SORT wanted)
list(SORT given)
if(NOT given STREQUAL wanted OR wanted STREQUAL "")
    message(FATAL_ERROR
        "kUsualMinutes has other findings than ${FINDINGS}:\n${given}\nwanted are:\n${wanted}")
endif()
string(REGEX MATCHALL "\"failure\\.[a-z-]+\":" given "${page}")
foreach(failure IN LISTS given)
    string(REGEX REPLACE "\"failure\\.([a-z-]+)\":" "[\"\\1\"," row "${failure}")
    string(FIND "${reasons}" "${row}" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "kUsualMinutes has ${failure} which ${MESSAGES} does not have")
    endif()
endforeach()

file(WRITE "${PAGE}" "${page}")
