# `cmake --install`: the program (src/CMakeLists.txt) and what makes it one of the desktop's own.
#
# A running window finds its desktop entry by the names that it has anyway: on X11 its class is
# the application's name, on Wayland its application id is the name of the executable's file.
# So the entry is called velmora.desktop and names the class Velmora.
include(GNUInstallDirs)

# The names under which software catalogues know the program: its web site's domain, reversed.
string(REGEX REPLACE "^https://(www\\.)?([^/:]+).*$" "\\2" domain "${VELMORA_WEB_SITE}")
string(REPLACE "-" "_" domain "${domain}")
string(REPLACE "." ";" domain "${domain}")
list(REVERSE domain)
list(JOIN domain "." domain)
string(TOLOWER "${domain}.velmora" VELMORA_COMPONENT_ID)
unset(domain)

# A name may hold what has a meaning in XML.
string(REPLACE "&" "&amp;" developer "${VELMORA_CREDIT_LINE_2}")
string(REPLACE "<" "&lt;" developer "${developer}")
configure_file(packaging/velmora.metainfo.xml.in
    packaging/${VELMORA_COMPONENT_ID}.metainfo.xml @ONLY)
unset(developer)
configure_file(packaging/velmora.1.in packaging/velmora.1 @ONLY)

if(UNIX AND NOT APPLE)
    install(FILES packaging/velmora.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/packaging/${VELMORA_COMPONENT_ID}.metainfo.xml"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/packaging/velmora.1"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    set(icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
    install(FILES assets/icons/velmora.svg DESTINATION "${icons}/scalable/apps")
    foreach(size IN ITEMS 16 22 24 32 48 64 128 256 512)
        install(FILES assets/icons/velmora-${size}.png
            DESTINATION "${icons}/${size}x${size}/apps" RENAME velmora.png)
    endforeach()
    unset(icons)
endif()
