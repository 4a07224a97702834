# shellcheck shell=bash disable=SC2034,SC2154
# What packaging/test and packaging/test-library share. Sourced after packaging/setup.sh. Its functions test the plug-in in
# $library, built for $platform, with the programs in $programs.

plugin=reaper_MERIDEK_FELSPAR
wine=/usr/lib/wine/wine64
library_test_tools=(qemu-aarch64:qemu-user "$wine:wine64")
export WINEPREFIX=$packaging/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
declare -A passed=() failed=()

# counts LOG STATUS: how many tests passed and failed, as the program itself tells at its end, or one.
counts() {
    tr -d '\r' <"$1" | awk -v status="$2" '
        /^\[  PASSED  \] [0-9]+ test/ { passed += $4; told = 1 }
        /^ *[0-9]+ FAILED TESTS?$/ { failed += $1; told = 1 }
        /^[0-9]+ passed, [0-9]+ failed$/ { passed += $1; failed += $3; told = 1 }
        /tests? passed, [0-9]+ tests? failed out of/ { failed += $4; passed += $NF - $4; told = 1 }
        END {
            if (!told) passed = status == 0
            if (status != 0 && !failed) failed = 1
            print passed + 0, failed + 0
        }'
}

# try NAME COMMAND...: runs a test of the current platform, counts it, and shows the end of its log if it fails.
try() {
    local name=$1 log="$packaging/results/$platform/$1.log" status=0 good bad begin=$SECONDS
    shift
    "$@" >"$log" 2>&1 </dev/null || status=$?
    read -r good bad < <(counts "$log" "$status")
    passed[$platform]=$((${passed[$platform]:-0} + good))
    failed[$platform]=$((${failed[$platform]:-0} + bad))
    printf '%-16s %-40s %5d passed %3d failed %5d s\n' "$platform" "$name" "$good" "$bad" $((SECONDS - begin))
    [ "$status" = 0 ] || tail -n 20 "$log"
}

# try_platforms PREFIX PLATFORM...: calls the function PREFIX_PLATFORM for each, and tells the sums. Fails if any test failed.
try_platforms() {
    local prefix=$1 all_failed=0
    shift
    for platform in "$@"; do
        rm -rf "$packaging/results/$platform"
        mkdir -p "$packaging/results/$platform"
        "${prefix}_${platform//-/_}"
    done
    echo
    for platform in "$@"; do
        printf '%-16s %d passed, %d failed\n' "$platform" "${passed[$platform]:-0}" "${failed[$platform]:-0}"
        all_failed=$((all_failed + ${failed[$platform]:-0}))
    done
    [ $all_failed = 0 ]
}

# in_folder FOLDER COMMAND...: runs it in a new empty folder.
in_folder() {
    rm -rf "$1"
    mkdir -p "$1"
    (cd "$1" && shift && "$@")
}

# build_lua COMPILER [OPTION...]: the interpreter as its makers release it, which shows its own Lua to modules.
build_lua() {
    local source=$packaging/sources/lua5.3/src files
    mapfile -t files < <(find "$source" -name '*.c' ! -name luac.c)
    "$@" -O2 -o "$packaging/$platform/lua" "${files[@]}" -lm
}

build_lua_for_aarch64() {
    local sysroot=$packaging/linux-aarch64/sysroot triple=aarch64-linux-gnu
    # The compiler would look for the C library beside itself first.
    build_lua $triple-gcc-12 --sysroot="$sysroot" -B"$sysroot/usr/lib/$triple" -L"$sysroot/usr/lib/$triple" \
        -L"$sysroot/lib/$triple" -DLUA_USE_POSIX -DLUA_USE_DLOPEN -Wl,-E,--no-as-needed -ldl
}

build_lua_for_windows() { build_lua x86_64-w64-mingw32-gcc-posix -static; }

# try_plugin [RUNNER...]: what needs nothing but the plug-in.
try_plugin() {
    local scratch=$packaging/$platform/scratch suffix=
    [ "$platform" != windows-x86_64 ] || suffix=.exe
    try "pure results" tests/platforms/pure_results/compare "$scratch/pure" "$@" "$programs/pure_results$suffix"
    try "host in C" in_folder "$scratch/host" "$@" "$programs/platform_host$suffix" "$library" \
        "$PWD/tests/plugin/entry/rows.txt"
}

# try_lua LUA...: the module in an interpreter for its platform.
try_lua() {
    local test tests=$PWD/tests/plugin/bindings folder=${library%/*}
    export LUA_CPATH="./?.${library##*.}"
    for test in stock_lua_test two_luas; do
        try "Lua: $test" env -C "$folder" "$@" "$tests/$test.lua"
    done
    try "Lua: abuse" env -C "$folder" "$@" -e "reaper = {}" -l $plugin "$tests/abuse.lua"
    unset LUA_CPATH
}
