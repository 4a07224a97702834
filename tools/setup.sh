# shellcheck shell=bash disable=SC2034
# What ./demo, ./test, ./format, .ci/run and packaging/ share: the Debian packages and how missing ones are installed.
# Sourced with the checkout as the current folder.

# Programs are written command:package, so that one that was installed in another way counts, too.
build_needs=(cmake:cmake ninja:ninja-build c++:g++ pkg-config:pkg-config libsndfile1-dev libebur128-dev
             libcli11-dev libexpected-dev libfast-float-dev liblua5.3-dev libpcre2-dev libutf8proc-dev
             nlohmann-json3-dev libgtest-dev libgmock-dev libbenchmark-dev python3:python3)
speech_needs=(asterisk-core-sounds-en-wav asterisk-core-sounds-fr-wav)
test_needs=(node:nodejs npm:npm ffmpeg:ffmpeg lua5.3:lua5.3)
format_needs=(clang-format-14:clang-format-14)
check_needs=(clang++:clang clang-tidy-14:clang-tidy-14 run-clang-tidy-14:clang-tidy-14 locales)

# is_missing NEED: neither the command is found nor the package installed.
is_missing() {
    case $1 in
        *:*) ! command -v "${1%%:*}" >/dev/null ;;
        *) [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" != installed ] ;;
    esac
}

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# install_missing NEED...: installs what is missing, in one go; asks for nothing when all is there.
install_missing() {
    local need packages=()
    for need in "$@"; do
        if is_missing "$need"; then packages+=("${need##*:}"); fi
    done
    [ ${#packages[@]} -gt 0 ] || return 0
    echo "Installing ${packages[*]}" >&2
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -qq --no-install-recommends "${packages[@]}" >/dev/null
}

# configure FOLDER [OPTION...]: the release build in FOLDER; quick when nothing changed.
configure() {
    local folder=$1
    shift
    cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release "$@" >/dev/null
}
