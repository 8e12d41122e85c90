# What the program is on Windows beside its code: the resources of its file, and a folder that
# holds all it needs. `cmake --install` makes the folder, cpack a zip of it, and
# packaging/windows/Installer.cmake an installer.

string(REGEX MATCH "^[0-9]+" year "${VELMORA_RELEASE_DATE}")
set(VELMORA_COPYRIGHT "${year} ${VELMORA_CREDIT_LINE_2}")
unset(year)

set(manifest "${PROJECT_SOURCE_DIR}/packaging/windows/velmora.manifest")
if(MSVC)
    target_sources(velmora PRIVATE "${manifest}") # the linker's own is merged with it
else()
    set(VELMORA_MANIFEST_LINE "1 24 \"${manifest}\"")
endif()
unset(manifest)
configure_file(packaging/windows/velmora.rc.in packaging/velmora.rc @ONLY)
configure_file(packaging/windows/velmora.nsi.in packaging/velmora.nsi @ONLY)
target_sources(velmora PRIVATE "${PROJECT_BINARY_DIR}/packaging/velmora.rc")
set_property(SOURCE "${PROJECT_BINARY_DIR}/packaging/velmora.rc"
    TARGET_DIRECTORY velmora
    PROPERTY OBJECT_DEPENDS
        "${PROJECT_SOURCE_DIR}/assets/icons/velmora.ico"
        "${PROJECT_SOURCE_DIR}/packaging/windows/velmora.manifest")

# `cpack` makes the zip.
string(TOLOWER "${CMAKE_SYSTEM_PROCESSOR}" processor)
set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME "velmora-${PROJECT_VERSION}-windows-${processor}")
unset(processor)
set(CPACK_STRIP_FILES OFF) # done already where it is possible
include(CPack)

# The program's own folder: its libraries beside it, Qt's plug-ins below it.
install(FILES LICENSE DESTINATION . RENAME LICENSE.txt)
# What Qt and the compiler's libraries ask for; tools/windows/build collects it.
set(VELMORA_LICENSES "" CACHE PATH "Folder of the licences of all else that goes into the package")
if(VELMORA_LICENSES)
    install(DIRECTORY "${VELMORA_LICENSES}/" DESTINATION .)
else()
    install(CODE "message(WARNING \"The licences of the libraries are not in this folder: \"
        \"nobody may pass it on. VELMORA_LICENSES names them; see docs/windows.md.\")")
endif()
if(MSVC)
    set(CMAKE_INSTALL_SYSTEM_RUNTIME_DESTINATION .)
    include(InstallRequiredSystemLibraries) # Visual Studio's own
endif()
if(NOT CMAKE_CROSSCOMPILING)
    # Qt's own tool, which comes with Qt for Windows and runs only there.
    if(Qt6_VERSION VERSION_GREATER_EQUAL 6.5)
        qt_generate_deploy_app_script(TARGET velmora OUTPUT_SCRIPT deploy
            NO_UNSUPPORTED_PLATFORM_ERROR NO_TRANSLATIONS)
        install(SCRIPT "${deploy}")
    else()
        message(STATUS "Qt ${Qt6_VERSION} cannot say what it needs on other machines: "
            "Qt's libraries are not installed.")
    endif()
    return()
endif()

# Elsewhere, what the program loads is named here, and what that needs is found by its headers.
set(plugins
    platforms/qwindows                # windows, keys, screens
    styles/qmodernwindowsstyle        # the look of the system's controls
    imageformats/qjpeg                # background pictures; png and bmp are built in
    tls/qschannelbackend              # the update check's TLS, by Windows itself
    multimedia/ffmpegmediaplugin)     # the audio cue, with FFmpeg's decoders
foreach(plugin IN LISTS plugins)
    set(path "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_PLUGINS}/${plugin}.dll")
    get_filename_component(folder "${plugin}" DIRECTORY)
    install(FILES "${path}" DESTINATION "${folder}")
endforeach()
set(folders "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS}")
foreach(library IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${library}"
        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    get_filename_component(path "${path}" DIRECTORY)
    list(APPEND folders "${path}")
endforeach()
list(REMOVE_DUPLICATES folders)
list(TRANSFORM folders REPLACE "(.+)" "\"\\1\"" OUTPUT_VARIABLE folders_quoted)
list(JOIN folders_quoted " " folders_quoted)

configure_file(packaging/windows/Libraries.cmake.in packaging/Libraries.cmake @ONLY)
install(SCRIPT "${PROJECT_BINARY_DIR}/packaging/Libraries.cmake")

unset(folder)
unset(folders)
unset(folders_quoted)
unset(path)
unset(plugins)
