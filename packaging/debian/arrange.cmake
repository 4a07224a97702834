# Gives the installed tree the shape of a Debian package. CPack runs it before it packs the tree.
if(NOT CPACK_GENERATOR STREQUAL DEB)
    return()
endif()
set(root ${CPACK_TEMPORARY_DIRECTORY}/usr)
set(debian ${CPACK_FELSPAR_SOURCE}/packaging/debian)
set(doc ${root}/share/doc/felspar)

# move(FROM TO): within the tree, with the folders above.
function(move from to)
    cmake_path(GET to PARENT_PATH above)
    file(MAKE_DIRECTORY ${root}/${above})
    file(RENAME ${root}/${from} ${root}/${to})
endfunction()

# run(COMMAND...): ends the packing if it fails.
function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Python's and zsh's own folders for packages.
move(share/felspar/python/meridek_felspar lib/python3/dist-packages/meridek_felspar)
file(REMOVE_RECURSE ${root}/share/felspar/python)
move(share/zsh/site-functions/_felspar share/zsh/vendor-completions/_felspar)
file(REMOVE_RECURSE ${root}/share/zsh/site-functions)

file(REMOVE ${doc}/LICENSE)
file(COPY ${debian}/copyright DESTINATION ${doc})
execute_process(COMMAND ${CPACK_FELSPAR_SOURCE}/packaging/licences OUTPUT_FILE ${doc}/THIRD_PARTY.md
                COMMAND_ERROR_IS_FATAL ANY)
file(MAKE_DIRECTORY ${root}/share/lintian/overrides)
configure_file(${debian}/lintian-overrides ${root}/share/lintian/overrides/felspar COPYONLY)

# The time of the release: of all files, and in the package's own list of changes.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    set(time $ENV{SOURCE_DATE_EPOCH})
else()
    execute_process(COMMAND git -C ${CPACK_FELSPAR_SOURCE} log -1 --format=%ct OUTPUT_VARIABLE time
                    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(ENV{SOURCE_DATE_EPOCH} ${time})
endif()
execute_process(COMMAND date --utc --date=@${time} "+%a, %d %b %Y %H:%M:%S +0000" OUTPUT_VARIABLE date
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(WRITE ${doc}/changelog.Debian
     "felspar (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) bookworm; urgency=medium\n\n"
     "  * Release ${CPACK_PACKAGE_VERSION}; changelog.gz says what is new.\n\n"
     " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
file(RENAME ${doc}/CHANGELOG.md ${doc}/changelog)
run(gzip -9n ${doc}/changelog ${doc}/changelog.Debian ${root}/share/man/man1/felspar.1)

run(find ${root} -type d -exec chmod 755 {} +)
run(find ${root} -type f -exec chmod u=rwX,go=rX {} +)
run(find ${CPACK_TEMPORARY_DIRECTORY} -exec touch --no-dereference --date=@${time} {} +)
