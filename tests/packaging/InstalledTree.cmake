# Installs the build into a folder and looks at what is there.
# Run as: cmake -DBUILD=<build> -DSCRATCH=<folder> -DCOMPONENT_ID=<id> -P InstalledTree.cmake
cmake_minimum_required(VERSION 3.21)

file(REMOVE_RECURSE "${SCRATCH}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${SCRATCH}"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

set(entry share/applications/velmora.desktop)
set(metainfo share/metainfo/${COMPONENT_ID}.metainfo.xml)
set(icons share/icons/hicolor)
set(wanted bin/velmora ${entry} ${metainfo} share/man/man1/velmora.1
    ${icons}/scalable/apps/velmora.svg)
foreach(size IN ITEMS 16 22 24 32 48 64 128 256 512)
    list(APPEND wanted ${icons}/${size}x${size}/apps/velmora.png)
    # The picture has the size that its folder promises: PNG keeps it in bytes 16 to 23.
    file(READ "${SCRATCH}/${icons}/${size}x${size}/apps/velmora.png" found OFFSET 16 LIMIT 8 HEX)
    math(EXPR bytes "(${size} << 32) + ${size}" OUTPUT_FORMAT HEXADECIMAL)
    math(EXPR found "0x${found}" OUTPUT_FORMAT HEXADECIMAL)
    if(NOT found STREQUAL bytes)
        message(SEND_ERROR "The icon of ${size} pixels has the size ${found}.")
    endif()
endforeach()

# Nothing is missing and nothing is there that nobody expects.
file(GLOB_RECURSE found RELATIVE "${SCRATCH}" "${SCRATCH}/*")
list(SORT wanted)
list(SORT found)
if(NOT found STREQUAL wanted)
    message(SEND_ERROR "Installed:\n${found}\nbut wanted:\n${wanted}")
endif()

# The entry, the metadata and the installed files name one another.
function(expect_in file)
    file(READ "${SCRATCH}/${file}" content)
    foreach(text IN LISTS ARGN)
        string(FIND "${content}" "${text}" position)
        if(position EQUAL -1)
            message(SEND_ERROR "There is no ${text} in ${file}.")
        endif()
    endforeach()
endfunction()
expect_in(${entry} "\nExec=velmora\n" "\nIcon=velmora\n" "\nStartupWMClass=Velmora\n"
    "\nTerminal=false\n")
expect_in(${metainfo} "<id>${COMPONENT_ID}</id>" "<binary>velmora</binary>"
    "<launchable type=\"desktop-id\">velmora.desktop</launchable>")
