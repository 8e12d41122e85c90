# Included by the build of tools/mutation/mutate (CMAKE_PROJECT_INCLUDE), where each change of a source
# costs a compilation: Qt's headers are compiled once, before all others.

# Otherwise they would have to be compiled for programs and for libraries.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_COMPILE_OPTIONS_PIE -fPIC)

function(velmora_precompile folder)
    get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
    # Not the entry routine under another name: the word "main" is a macro there.
    list(FILTER targets INCLUDE REGEX "^(velmora|tst)")
    list(FILTER targets EXCLUDE REGEX "_(entry|assets)$")
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(type MATCHES "LIBRARY|EXECUTABLE" AND NOT type STREQUAL "INTERFACE_LIBRARY")
            target_precompile_headers(${target} REUSE_FROM headers)
        endif()
    endforeach()
    get_property(folders DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
    foreach(inner IN LISTS folders)
        velmora_precompile("${inner}")
    endforeach()
endfunction()

function(velmora_precompile_all)
    set(modules Core Gui Widgets Network Multimedia)
    file(WRITE "${CMAKE_BINARY_DIR}/headers.cpp" "")
    add_library(headers OBJECT "${CMAKE_BINARY_DIR}/headers.cpp")
    foreach(module IN LISTS modules)
        target_link_libraries(headers PRIVATE Qt6::${module})
        target_precompile_headers(headers PRIVATE <Qt${module}>)
    endforeach()
    target_link_libraries(headers PRIVATE velmora_options)
    velmora_precompile("${CMAKE_SOURCE_DIR}/src")
    velmora_precompile("${CMAKE_SOURCE_DIR}/tests")
endfunction()
cmake_language(DEFER CALL velmora_precompile_all)
