# What belongs to the vendor, who publishes a build. The defaults lie in a domain that is reserved
# for examples: an unconfigured build asks no real server.
set(VELMORA_UPDATE_HOST "updates.velmora.example" CACHE STRING
    "Host of the update document https://HOST/api/versions.json")
set(VELMORA_WEB_SITE "https://www.velmora.example" CACHE STRING
    "Web site that the About card opens (an https URL)")
set(VELMORA_CREDIT_LINE_1 "Designed and built by" CACHE STRING
    "First line of the About card's credits")
set(VELMORA_CREDIT_LINE_2 "the Velmora authors" CACHE STRING
    "Second line of the About card's credits")
set(VELMORA_CONTACT "the Velmora authors <authors@velmora.example>" CACHE STRING
    "Who answers for the packages, as in: Name <address>")

# Checked as far as a mistake would go unnoticed until a user presses a button.
set(label "[A-Za-z0-9]([A-Za-z0-9-]*[A-Za-z0-9])?")
set(host "${label}(\\.${label})*")

if(NOT VELMORA_UPDATE_HOST MATCHES "^${host}$")
    message(FATAL_ERROR
        "VELMORA_UPDATE_HOST is not a host name: \"${VELMORA_UPDATE_HOST}\". "
        "Give it without scheme, port and path, as in updates.example.org.")
endif()
# No "&" in the address: it would be drawn as the mark of a button's shortcut.
set(port 443)
if(NOT VELMORA_WEB_SITE MATCHES "^https://${host}(:([0-9]+))?(/[A-Za-z0-9._~/?#=%+-]*)?$")
    set(port 0)
elseif(CMAKE_MATCH_4)
    set(port ${CMAKE_MATCH_5})
endif()
if(port LESS 1 OR port GREATER 65535)
    message(FATAL_ERROR
        "VELMORA_WEB_SITE is not an https URL: \"${VELMORA_WEB_SITE}\". "
        "Give it as in https://www.example.org.")
endif()
foreach(line IN ITEMS VELMORA_CREDIT_LINE_1 VELMORA_CREDIT_LINE_2)
    if("${${line}}" STREQUAL "" OR "${${line}}" MATCHES "[\r\n\"\\]")
        message(FATAL_ERROR
            "${line} is not one line of text without quotes and backslashes: \"${${line}}\".")
    endif()
endforeach()
if(NOT VELMORA_CONTACT MATCHES "^[^<>\r\n\"]+ <[^<>@ ]+@${host}>$")
    message(FATAL_ERROR
        "VELMORA_CONTACT is not a name and a mail address: \"${VELMORA_CONTACT}\". "
        "Give it as in: the Example company <velmora@example.org>.")
endif()

string(REGEX REPLACE "^https://|/$" "" VELMORA_WEB_ADDRESS "${VELMORA_WEB_SITE}")

unset(label)
unset(host)
unset(port)
