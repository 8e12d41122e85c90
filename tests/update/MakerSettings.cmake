# Configures the maker's settings with good and bad values, each in a CMake of its own.
# Run as: cmake -DPROJECT=<top directory> -DSCRATCH=<directory> -P MakerSettings.cmake
cmake_minimum_required(VERSION 3.21)

file(REMOVE_RECURSE "${SCRATCH}")
file(MAKE_DIRECTORY "${SCRATCH}")
file(WRITE "${SCRATCH}/configure.cmake"
    "include(\"${PROJECT}/cmake/Maker.cmake\")\n"
    "configure_file(\"${PROJECT}/src/update/Maker.h.in\" \"${SCRATCH}/Maker.h\" @ONLY)\n")

# Configures with the definitions; sets `result` and `output`, and leaves Maker.h.
function(configure)
    file(REMOVE "${SCRATCH}/Maker.h")
    execute_process(COMMAND "${CMAKE_COMMAND}" ${ARGV} -P "${SCRATCH}/configure.cmake"
        RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    set(result "${status}" PARENT_SCOPE)
    # CMake breaks the lines of its messages.
    string(REGEX REPLACE "[ \n]+" " " output "${output}")
    set(output "${output}" PARENT_SCOPE)
endfunction()

# The setting takes the value, and the header holds the line.
function(accepts setting value line)
    configure("-D${setting}=${value}")
    if(NOT result EQUAL 0)
        message(SEND_ERROR "${setting}=${value} is refused: ${output}")
        return()
    endif()
    file(READ "${SCRATCH}/Maker.h" header)
    string(FIND "${header}" "${line}" found)
    if(found EQUAL -1)
        message(SEND_ERROR "${setting}=${value} does not give the line ${line}:\n${header}")
    endif()
endfunction()

# The setting refuses the value and says which setting it is.
function(refuses setting value reason)
    configure("-D${setting}=${value}")
    if(result EQUAL 0)
        message(SEND_ERROR "${setting}=\"${value}\" is accepted.")
        return()
    endif()
    string(FIND "${output}" "${setting} is not ${reason}" found)
    if(found EQUAL -1)
        message(SEND_ERROR "${setting}=\"${value}\" is refused without its reason: ${output}")
    endif()
endfunction()

# Unconfigured, no one's server is asked: the names lie under a reserved example domain.
configure()
if(NOT result EQUAL 0)
    message(SEND_ERROR "The defaults are refused: ${output}")
endif()
file(READ "${SCRATCH}/Maker.h" header)
foreach(line IN ITEMS
        "makerUpdateHost[] = \"updates.velmora.example\";"
        "makerWebSite[] = \"https://www.velmora.example\";"
        "makerWebAddress[] = \"www.velmora.example\";")
    string(FIND "${header}" "${line}" found)
    if(found EQUAL -1)
        message(SEND_ERROR "The defaults do not give the line ${line}:\n${header}")
    endif()
endforeach()

foreach(host IN ITEMS updates.example.org UPDATES.Example.Org localhost 192.0.2.7 a-b.c9 x)
    accepts(VELMORA_UPDATE_HOST "${host}" "makerUpdateHost[] = \"${host}\";")
endforeach()
foreach(host IN ITEMS
        "" " " "https://updates.example.org" "updates.example.org/" "updates.example.org:443"
        "updates.example.org/api" "user@updates.example.org" "updates example.org" " a.example"
        "a..example" ".example" "a.example." "-a.example" "a-.example"
        "a_b.example" "a\".example" "a%20b.example" "[::1]" "a.example\nb.example" "ä.example")
    refuses(VELMORA_UPDATE_HOST "${host}" "a host name")
endforeach()

foreach(site IN ITEMS
        "https://example.org|example.org"
        "https://www.example.org/|www.example.org"
        "https://www.example.org/velmora|www.example.org/velmora"
        "https://www.example.org/velmora/|www.example.org/velmora"
        "https://www.example.org:8443/a?b=1#c|www.example.org:8443/a?b=1#c")
    string(REPLACE "|" ";" pair "${site}")
    list(GET pair 0 url)
    list(GET pair 1 address)
    accepts(VELMORA_WEB_SITE "${url}" "makerWebSite[] = \"${url}\";")
    accepts(VELMORA_WEB_SITE "${url}" "makerWebAddress[] = \"${address}\";")
endforeach()
foreach(site IN ITEMS
        "" "www.example.org" "http://www.example.org" "HTTPS://www.example.org" "https:"
        "https://" "https:///a" "https//www.example.org" " https://www.example.org"
        "https://www.example.org/a b" "https://user@www.example.org"
        "https://www.example.org:/" "https://www.example.org/\"" "https://www.example.org/\\n"
        "ftp://www.example.org" "javascript:alert(1)" "https://-a.example"
        "https://www.example.org\nhttp://b.example" "https://www.example.org:0"
        "https://www.example.org:65536" "https://www.example.org:99999" "https://a.example/?a&b")
    refuses(VELMORA_WEB_SITE "${site}" "an https URL")
endforeach()

foreach(number IN ITEMS 1 2)
    set(setting VELMORA_CREDIT_LINE_${number})
    foreach(text IN ITEMS "the Velmora authors" "Ärzte & Söhne" "a, b (c) @PROJECT@ %1" "x")
        accepts(${setting} "${text}" "makerCreditLine${number}[] = R\"text(${text})text\";")
    endforeach()
    foreach(text IN ITEMS "" "two\nlines" "two\rlines" "a \"quoted\" name" "back\\slash")
        refuses(${setting} "${text}" "one line of text without quotes and backslashes")
    endforeach()
endforeach()

foreach(contact IN ITEMS
        "the Velmora authors <authors@velmora.example>" "Ärzte & Söhne <a.b+c@example.org>")
    configure("-DVELMORA_CONTACT=${contact}")
    if(NOT result EQUAL 0)
        message(SEND_ERROR "VELMORA_CONTACT=${contact} is refused: ${output}")
    endif()
endforeach()
foreach(contact IN ITEMS
        "" "authors@velmora.example" "the Velmora authors" "<a@example.org>" "A <example.org>"
        "A <a@b@example.org>" "A <a@>" "A <a@example.org> B" "A\nB <a@example.org>"
        "A \"B\" <a@example.org>" "A <a@-example.org>")
    refuses(VELMORA_CONTACT "${contact}" "a name and a mail address")
endforeach()
