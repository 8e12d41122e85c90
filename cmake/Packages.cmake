# `cpack`: the Debian package, or the zip for Windows.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmora)
set(CPACK_PACKAGE_VENDOR "${VELMORA_CREDIT_LINE_2}")
set(CPACK_PACKAGE_CONTACT "${VELMORA_CONTACT}")
set(CPACK_PACKAGE_HOMEPAGE_URL "${VELMORA_WEB_SITE}")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "count-down timer for live events")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Velmora shows speakers how much time they have left. The operator drives it
from a control window; a second window shows the running time, the wall clock
and a message full screen to the people on stage.
.
It counts down, up and on into overtime, has presets, keyboard shortcuts that
serve button panels as well, and plays a sound of your choice at zero.")

# What the program links is found by dpkg-shlibdeps. What it loads when it runs is not:
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

# The audio cue. From Qt 6.5 on Qt's own backend has all decoders that it needs. The
# one before it asks GStreamer, which cannot even be created without "base", and finds its
# decoders and the way to the sound server in "good" and, for aac, in "libav".
if(Qt6Multimedia_VERSION VERSION_LESS 6.5)
    set(CPACK_DEBIAN_PACKAGE_DEPENDS
        "gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, gstreamer1.0-libav")
endif()

# Without these it runs, but: no sound, buttons without their signs, no update check.
string(JOIN ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "ca-certificates"
    "fonts-dejavu-core"
    "fonts-symbola"
    "pipewire-pulse | pulseaudio"
    "qt6-wayland")

if(WIN32)
    set(CPACK_GENERATOR ZIP)
    string(TOLOWER "${CMAKE_SYSTEM_PROCESSOR}" processor)
    set(CPACK_PACKAGE_FILE_NAME "velmora-${PROJECT_VERSION}-windows-${processor}")
    unset(processor)
    set(CPACK_STRIP_FILES OFF) # done already where it is possible
endif()

if(UNIX AND NOT APPLE)
    # The documents that every Debian package carries, where they are expected.
    execute_process(
        COMMAND date --utc --rfc-email "--date=${VELMORA_RELEASE_DATE}"
        OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    configure_file(packaging/debian/changelog.in packaging/debian/changelog.Debian @ONLY)
    configure_file(packaging/debian/copyright.in packaging/debian/copyright @ONLY)
    unset(date)
    set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_BINARY_DIR}/packaging/debian/Stage.cmake")
    configure_file(packaging/debian/Stage.cmake.in packaging/debian/Stage.cmake @ONLY)
endif()

include(CPack)
