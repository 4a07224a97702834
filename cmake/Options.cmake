# The compile options of every target of this project, used by linking to felspar_options.
add_library(felspar_options INTERFACE)
target_compile_options(
    felspar_options
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wshadow
              -Wconversion
              -Wsign-conversion
              -Werror
              # g++ 12 reports overlaps in std::string's operator+ that do not exist.
              $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
              # Programs may derive from records, which are destroyed only through their own class.
              $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-delete-non-abstract-non-virtual-dtor>
              # Fused multiply-adds would change the last bits of gains and levels from machine to machine.
              -ffp-contract=off)
if(FELSPAR_SANITIZE)
    # With its null checks, g++ 12 does not treat addresses as constants, but the API's texts are constants.
    # Using a null pointer still faults.
    target_compile_options(
        felspar_options
        INTERFACE -fsanitize=${FELSPAR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
                  # The classes of the host's objects are known only to the host.
                  -fno-sanitize=vptr
                  $<$<CXX_COMPILER_ID:GNU>:-fno-sanitize=null,nonnull-attribute,returns-nonnull-attribute>
                  # It also reports uninitialised functions in <regex> that do not exist.
                  $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(felspar_options INTERFACE -fsanitize=${FELSPAR_SANITIZE})
endif()
