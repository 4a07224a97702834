# zig's own linker takes no list of exported names. CMake reads this after its rules for the platform.
set(CMAKE_CXX_CREATE_SHARED_LIBRARY
    "${CMAKE_CURRENT_LIST_DIR}/../link-macos <CMAKE_CXX_COMPILER> -dylib <LINK_FLAGS> -install_name @rpath/<TARGET_SONAME> -o <TARGET> <OBJECTS> <LINK_LIBRARIES>")
# A program shows nothing of the libraries inside.
set(CMAKE_CXX_LINK_EXECUTABLE
    "${CMAKE_CURRENT_LIST_DIR}/../link-macos <CMAKE_CXX_COMPILER> -execute -unexported_symbol '*' <LINK_FLAGS> -o <TARGET> <OBJECTS> <LINK_LIBRARIES>")
