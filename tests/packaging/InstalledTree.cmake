# Installs the build into a folder and looks at what is there.
# Run as: cmake -DBUILD=<build> -DSCRATCH=<folder> -DCOMPONENT_ID=<id> -P InstalledTree.cmake
cmake_minimum_required(VERSION 3.21)

file(REMOVE_RECURSE "${SCRATCH}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${SCRATCH}"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

# Nothing is missing and nothing is there that nobody expects.
set(icons share/icons/hicolor)
set(wanted
    bin/velmora
    share/applications/velmora.desktop
    share/man/man1/velmora.1
    share/metainfo/${COMPONENT_ID}.metainfo.xml
    ${icons}/scalable/apps/velmora.svg)
foreach(size IN ITEMS 16 22 24 32 48 64 128 256 512)
    list(APPEND wanted ${icons}/${size}x${size}/apps/velmora.png)
endforeach()
file(GLOB_RECURSE found RELATIVE "${SCRATCH}" "${SCRATCH}/*")
list(SORT wanted)
list(SORT found)
if(NOT found STREQUAL wanted)
    message(SEND_ERROR "Installed:\n${found}\nbut wanted:\n${wanted}")
endif()

# Each picture has the size that its folder promises: PNG keeps it in bytes 16 to 23.
foreach(size IN ITEMS 16 22 24 32 48 64 128 256 512)
    file(READ "${SCRATCH}/${icons}/${size}x${size}/apps/velmora.png" header LIMIT 24 HEX)
    string(SUBSTRING "${header}" 32 8 width)
    string(SUBSTRING "${header}" 40 8 height)
    math(EXPR width "0x${width}")
    math(EXPR height "0x${height}")
    if(NOT "${width}x${height}" STREQUAL "${size}x${size}")
        message(SEND_ERROR "The icon of ${size} pixels has ${width} x ${height}.")
    endif()
endforeach()

# The entry, the metadata and the installed files name one another.
file(READ "${SCRATCH}/share/applications/velmora.desktop" entry)
foreach(line IN ITEMS "Exec=velmora" "Icon=velmora" "StartupWMClass=Velmora" "Terminal=false")
    if(NOT entry MATCHES "(^|\n)${line}\n")
        message(SEND_ERROR "The desktop entry has no line ${line}.")
    endif()
endforeach()
file(READ "${SCRATCH}/share/metainfo/${COMPONENT_ID}.metainfo.xml" metainfo)
foreach(element IN ITEMS
        "<id>${COMPONENT_ID}</id>"
        "<launchable type=\"desktop-id\">velmora.desktop</launchable>"
        "<binary>velmora</binary>")
    string(FIND "${metainfo}" "${element}" position)
    if(position EQUAL -1)
        message(SEND_ERROR "The metadata has no ${element}.")
    endif()
endforeach()
