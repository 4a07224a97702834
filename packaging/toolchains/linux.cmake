set(triple ${CMAKE_SYSTEM_PROCESSOR}-linux-gnu)
set(CMAKE_SYSROOT ${packaging}/${platform}/sysroot)
set(CMAKE_C_COMPILER ${triple}-gcc-12)
set(CMAKE_CXX_COMPILER ${triple}-g++-12)
set(CMAKE_LIBRARY_ARCHITECTURE ${triple})
# The C++ library goes inside. The unwinder stays the system's: every process may have only one, and it is part of
# every system.
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static-libstdc++ -Wl,--as-needed")
endforeach()
list(APPEND CMAKE_FIND_ROOT_PATH ${CMAKE_SYSROOT})
