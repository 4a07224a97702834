set(platform macos-x86_64)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(zig_target x86_64-macos)
include(${CMAKE_CURRENT_LIST_DIR}/macos.cmake)
