# Makes the installer of what `cmake --install` has put into a folder:
#
#     cmake -DSTAGE=FOLDER -DSCRIPT=velmora.nsi -DOUTPUT=velmora-setup.exe -P Installer.cmake
#
# SCRIPT is packaging/velmora.nsi of the build folder. Needs makensis 3 with its 64-bit stubs, as
# in Debian's package nsis.
foreach(name IN ITEMS STAGE SCRIPT OUTPUT)
    if(NOT ${name})
        message(FATAL_ERROR "${name} is missing.")
    endif()
    get_filename_component(${name} "${${name}}" ABSOLUTE)
endforeach()
find_program(makensis makensis REQUIRED)
file(TO_NATIVE_PATH "${STAGE}" native_stage) # where it runs on Windows, it divides only such paths

# The uninstaller gets each file and, the inner ones first, each folder.
file(GLOB_RECURSE paths LIST_DIRECTORIES true RELATIVE "${STAGE}" "${STAGE}/*")
list(SORT paths ORDER DESCENDING)
set(files "")
set(folders "")
foreach(path IN LISTS paths)
    string(REPLACE "/" "\\" place "$INSTDIR/${path}")
    if(IS_DIRECTORY "${STAGE}/${path}")
        string(APPEND folders "    RMDir \"${place}\"\n")
    else()
        string(APPEND files "    Delete \"${place}\"\n")
    endif()
endforeach()
if(NOT files)
    message(FATAL_ERROR "There is nothing in ${STAGE}.")
endif()
get_filename_component(folder "${SCRIPT}" DIRECTORY)
file(WRITE "${folder}/files.nsh"
    "!macro RemoveFiles\n${files}!macroend\n!macro RemoveFolders\n${folders}!macroend\n")

execute_process(
    COMMAND "${makensis}" -V2 -WX "-DSTAGE=${native_stage}" "-DFILES=${folder}/files.nsh"
        "-DOUTPUT=${OUTPUT}" "${SCRIPT}"
    COMMAND_ERROR_IS_FATAL ANY)
