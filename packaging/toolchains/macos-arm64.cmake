set(platform macos-arm64)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(zig_target aarch64-macos)
include(${CMAKE_CURRENT_LIST_DIR}/macos.cmake)
