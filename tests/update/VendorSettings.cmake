# Configures the vendor's settings with good and bad values, each in a CMake of its own.
# Run as: cmake -DPROJECT=<top directory> -DSCRATCH=<directory> -P VendorSettings.cmake
cmake_minimum_required(VERSION 3.21)

file(REMOVE_RECURSE "${SCRATCH}")
file(WRITE "${SCRATCH}/configure.cmake"
    "include(\"${PROJECT}/cmake/Vendor.cmake\")\n"
    "configure_file(\"${PROJECT}/src/update/Vendor.h.in\" \"${SCRATCH}/Vendor.h\" @ONLY)\n")

# expect(<setting> <text> <value>...): with each value, the text is in Vendor.h or, where the value is
# refused, in CMake's message. In the text, VALUE stands for the value.
function(expect setting text)
    foreach(value IN LISTS ARGN)
        execute_process(COMMAND "${CMAKE_COMMAND}" "-D${setting}=${value}" -P "${SCRATCH}/configure.cmake"
            RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
        if(status EQUAL 0)
            file(READ "${SCRATCH}/Vendor.h" output)
        else()
            string(REGEX REPLACE "[ \n]+" " " output "${output}") # CMake breaks its lines
        endif()
        string(REPLACE VALUE "${value}" wanted "${text}")
        string(FIND "${output}" "${wanted}" found)
        if(found EQUAL -1)
            message(SEND_ERROR "${setting}=\"${value}\" does not give \"${wanted}\":\n${output}")
        endif()
    endforeach()
endfunction()

# Unconfigured, no one's server is asked: the names lie under a reserved example domain.
expect(UNUSED "vendorUpdateHost[] = \"updates.velmora.example\";" " ")
expect(UNUSED "vendorWebSite[] = \"https://www.velmora.example\";" " ")
expect(UNUSED "vendorWebAddress[] = \"www.velmora.example\";" " ")

expect(VELMORA_UPDATE_HOST "vendorUpdateHost[] = \"VALUE\";"
    updates.example.org UPDATES.Example.Org localhost 192.0.2.7 a-b.c9 x)
expect(VELMORA_UPDATE_HOST "VELMORA_UPDATE_HOST is not a host name"
    "" " " "https://updates.example.org" "updates.example.org/" "updates.example.org:443"
    "updates.example.org/api" "user@updates.example.org" "updates example.org" " a.example"
    "a..example" ".example" "a.example." "-a.example" "a-.example"
    "a_b.example" "a\".example" "a%20b.example" "[::1]" "a.example\nb.example" "ä.example")

foreach(address IN ITEMS
        example.org www.example.org www.example.org/velmora "www.example.org:8443/a?b=1#c")
    expect(VELMORA_WEB_SITE "vendorWebSite[] = \"VALUE\";" "https://${address}" "https://${address}/")
    expect(VELMORA_WEB_SITE "vendorWebAddress[] = \"${address}\";"
        "https://${address}" "https://${address}/")
endforeach()
expect(VELMORA_WEB_SITE "VELMORA_WEB_SITE is not an https URL"
    "" "www.example.org" "http://www.example.org" "HTTPS://www.example.org" "https:"
    "https://" "https:///a" "https//www.example.org" " https://www.example.org"
    "https://www.example.org/a b" "https://user@www.example.org"
    "https://www.example.org:/" "https://www.example.org/\"" "https://www.example.org/\\n"
    "ftp://www.example.org" "javascript:alert(1)" "https://-a.example"
    "https://www.example.org\nhttp://b.example" "https://www.example.org:0"
    "https://www.example.org:65536" "https://www.example.org:99999" "https://a.example/?a&b")

foreach(number IN ITEMS 1 2)
    expect(VELMORA_CREDIT_LINE_${number} "vendorCreditLine${number}[] = R\"text(VALUE)text\";"
        "the Velmora authors" "Ärzte & Söhne" "a, b (c) @PROJECT@ %1" "x")
    expect(VELMORA_CREDIT_LINE_${number}
        "VELMORA_CREDIT_LINE_${number} is not one line of text without quotes and backslashes"
        "" "two\nlines" "two\rlines" "a \"quoted\" name" "back\\slash")
endforeach()

# Only debian/rules reads the contact: whatever Vendor.h says shows that it is accepted.
expect(VELMORA_CONTACT "vendorUpdateHost[] = "
    "the Velmora authors <authors@velmora.example>" "Ärzte & Söhne <a.b+c@example.org>")
expect(VELMORA_CONTACT "VELMORA_CONTACT is not a name and a mail address"
    "" "authors@velmora.example" "the Velmora authors" "<a@example.org>" "A <example.org>"
    "A <a@b@example.org>" "A <a@>" "A <a@example.org> B" "A\nB <a@example.org>"
    "A \"B\" <a@example.org>" "A <a@-example.org>")
