# zig's own linker takes no list of exported names. CMake reads this after its rules for the platform.
set(CMAKE_CXX_CREATE_SHARED_LIBRARY
    "${CMAKE_CURRENT_LIST_DIR}/../link-macos <CMAKE_CXX_COMPILER> <LINK_FLAGS> -install_name @rpath/<TARGET_SONAME> -o <TARGET> <OBJECTS> <LINK_LIBRARIES>")
