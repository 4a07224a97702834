# Debian 12's compiler on Debian 11's C library, so that the result runs on both and on whatever is newer.
set(platform linux-x86_64)
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/linux.cmake)
