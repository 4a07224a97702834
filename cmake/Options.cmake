# What every target of this project is compiled with: link it as felspar_options.
add_library(felspar_options INTERFACE)
target_include_directories(felspar_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(
    felspar_options
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wshadow
              -Wconversion
              -Wsign-conversion
              -Werror
              # g++ 12 sees overlaps in std::string's operator+ that are not there.
              $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
              # Fused multiply-adds would change the last bits of gains and levels from machine to machine.
              -ffp-contract=off)
if(FELSPAR_SANITIZE)
    # While g++ 12 checks for nulls, no address is a constant to it, and the API's texts are constants. A null that is
    # used still faults.
    target_compile_options(
        felspar_options
        INTERFACE -fsanitize=${FELSPAR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
                  # The host's objects are of classes that only the host knows.
                  -fno-sanitize=vptr
                  $<$<CXX_COMPILER_ID:GNU>:-fno-sanitize=null,nonnull-attribute,returns-nonnull-attribute>
                  # And it sees uninitialised functions in <regex> that are not there.
                  $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(felspar_options INTERFACE -fsanitize=${FELSPAR_SANITIZE})
endif()
