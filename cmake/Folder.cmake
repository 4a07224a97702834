# One target per folder. A target sees only the headers of its own folder and of those that it uses, so an
# include against the direction of the layers does not compile: each folder is reached through its own link
# below the build folder.

# felspar_include_as(target visibility prefix): files of the current folder are included as "prefix/file.hpp".
function(felspar_include_as target visibility prefix)
    set(root ${PROJECT_BINARY_DIR}/include/${target})
    cmake_path(GET prefix PARENT_PATH above)
    file(MAKE_DIRECTORY ${root}/${above})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${prefix} SYMBOLIC)
    target_include_directories(${target} ${visibility} ${root})
endfunction()

# felspar_folder(target OBJECT|STATIC|INTERFACE INCLUDE_AS prefix SOURCES files... USES targets...
#                LINK libraries...)
# Users of the folder also see what it uses; LINK is for libraries that only its own sources need.
function(felspar_folder target type)
    cmake_parse_arguments(arg "" "INCLUDE_AS" "SOURCES;USES;LINK" ${ARGN})
    add_library(${target} ${type} ${arg_SOURCES})
    if(type STREQUAL INTERFACE)
        set(visibility INTERFACE)
    else()
        set(visibility PUBLIC)
    endif()
    felspar_include_as(${target} ${visibility} ${arg_INCLUDE_AS})
    target_link_libraries(${target} ${visibility} felspar_options ${arg_USES})
    if(arg_LINK)
        target_link_libraries(${target} PRIVATE ${arg_LINK})
    endif()
    felspar_check_headers(${target} ${arg_INCLUDE_AS})
endfunction()

# Compiles each header of the current folder on its own, as part of the target check_headers.
function(felspar_check_headers target prefix)
    file(GLOB headers RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} CONFIGURE_DEPENDS *.hpp)
    set(sources)
    foreach(header IN LISTS headers)
        set(source ${PROJECT_BINARY_DIR}/check_headers/${target}/${header}.cpp)
        file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${prefix}/${header}\"\n")
        list(APPEND sources ${source})
    endforeach()
    if(sources)
        add_library(${target}_headers OBJECT EXCLUDE_FROM_ALL ${sources})
        target_link_libraries(${target}_headers PRIVATE ${target})
        add_dependencies(check_headers ${target}_headers)
    endif()
endfunction()
