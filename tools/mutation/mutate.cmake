# Included by the build of tools/mutation/mutate (CMAKE_PROJECT_INCLUDE), where each change of a
# source costs a compilation: Qt's headers are compiled once, before all others.

# Otherwise they would have to be compiled for programs and for libraries.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_COMPILE_OPTIONS_PIE -fPIC)

# Each library of src/ is linked by itself, and no test again when it has changed.
function(add_library)
    if(CMAKE_CURRENT_SOURCE_DIR STREQUAL "${CMAKE_SOURCE_DIR}/src")
        list(TRANSFORM ARGV REPLACE "^STATIC$" SHARED)
    endif()
    _add_library(${ARGV})
endfunction()

function(velmora_precompile)
    if(TARGET Qt6::Widgets)
        file(WRITE "${CMAKE_BINARY_DIR}/headers.cpp" "")
        add_library(headers OBJECT "${CMAKE_BINARY_DIR}/headers.cpp")
        target_link_libraries(headers
            PRIVATE velmora_options Qt6::Widgets Qt6::Network Qt6::Multimedia)
        target_precompile_headers(headers PRIVATE <QtWidgets> <QtNetwork> <QtMultimedia>)
        get_property(targets DIRECTORY src PROPERTY BUILDSYSTEM_TARGETS)
        foreach(target IN LISTS targets)
            target_precompile_headers(${target} REUSE_FROM headers)
        endforeach()
    endif()
endfunction()
cmake_language(DEFER CALL velmora_precompile)
