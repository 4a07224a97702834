set(triple ${CMAKE_SYSTEM_PROCESSOR}-linux-gnu)
set(CMAKE_SYSROOT ${packaging}/${platform}/sysroot)
set(CMAKE_C_COMPILER ${triple}-gcc-12)
set(CMAKE_CXX_COMPILER ${triple}-g++-12)
set(CMAKE_LIBRARY_ARCHITECTURE ${triple})
# The compiler would look for the C library beside itself first. The C++ library goes inside. The unwinder stays the
# system's: every process may have only one, and it is part of every system. The C++ library needs threads even where
# the program has none.
set(c_library ${CMAKE_SYSROOT}/usr/lib/${triple})
set(link_flags "-B${c_library} -L${c_library} -L${CMAKE_SYSROOT}/lib/${triple} -static-libstdc++ -pthread -Wl,--as-needed")
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "${link_flags}")
endforeach()
string(APPEND CMAKE_SHARED_LINKER_FLAGS_INIT " -Wl,-z,defs")
set(CMAKE_CXX_STANDARD_LIBRARIES_INIT ${packaging}/${platform}/newer_glibc.o)
list(APPEND CMAKE_FIND_ROOT_PATH ${CMAKE_SYSROOT})
