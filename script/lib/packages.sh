# shellcheck shell=bash disable=SC2034
# Sourced by the scripts beside it: makes sure that the tools they need are there.

# tool -> the Debian package that brings it. A name with a slash or .hpp is a header that the compiler must find, or with
# a slash in front a file; libclang_rt is what Clang's sanitizers and libFuzzer run on.
declare -A package_of=(
    [g++]=g++
    [clang++]=clang
    [libclang_rt]=libclang-rt-14-dev
    [clang-format]=clang-format-14
    [cmake]=cmake
    [ninja]=ninja-build
    [pkg-config]=pkg-config
    [doxygen]=doxygen
    [dpkg-shlibdeps]=dpkg-dev
    [mmdebstrap]=mmdebstrap
    [npm]=npm
    [chromium]=chromium
    [gtest/gtest.h]=libgtest-dev
    [CLI/CLI.hpp]=libcli11-dev
    [fast_float/fast_float.h]=libfast-float-dev
    [nlohmann/json.hpp]=nlohmann-json3-dev
    [pugixml.hpp]=libpugixml-dev
    [cairo/cairo.h]=libcairo2-dev
    [arm-linux-gnueabihf-g++]=g++-arm-linux-gnueabihf
    [qemu-arm]=qemu-user
    [x86_64-w64-mingw32-g++-posix]=g++-mingw-w64-x86-64
    [wine]=wine
    [clang-tidy]=clang-tidy
    [shellcheck]=shellcheck
    [/usr/src/googletest/CMakeLists.txt]=googletest
    [CGAL/version.h]=libcgal-dev
)
# What qsvtin is built with beside the library.
host_needs=(pkg-config CLI/CLI.hpp fast_float/fast_float.h nlohmann/json.hpp pugixml.hpp cairo/cairo.h)
# What the presets arm and windows are built and run with.
arm_needs=(arm-linux-gnueabihf-g++ qemu-arm /usr/src/googletest/CMakeLists.txt)
windows_needs=(x86_64-w64-mingw32-g++-posix wine /usr/src/googletest/CMakeLists.txt)

has() {
    case $1 in
        /*) [[ -e $1 ]] ;;
        */* | *.hpp) echo "#include <$1>" | "${CXX:-g++}" -E -x c++ - >/dev/null 2>&1 ;;
        libclang_rt) compgen -G "$(clang++ -print-resource-dir 2>/dev/null)/lib/*/libclang_rt.fuzzer*" >/dev/null ;;
        clang-format) command -v clang-format-14 >/dev/null || [[ $(clang-format --version 2>/dev/null) == *" version 14."* ]] ;;
        *) command -v "$1" >/dev/null ;;
    esac
}

missing_of() {
    local tool
    for tool in "$@"; do
        has "$tool" || echo "$tool"
    done
}

# need <tool>...: installs what is missing with apt-get; where that cannot work, says what to install and
# ends the script.
need() {
    local tool as_root=() packages=() missing log
    mapfile -t missing < <(missing_of "$@")
    ((${#missing[@]})) || return 0
    for tool in "${missing[@]}"; do
        packages+=("${package_of[$tool]}")
    done
    if ((EUID != 0)); then
        as_root=(sudo)
    fi
    if ! command -v apt-get >/dev/null || { ((EUID != 0)) && ! command -v sudo >/dev/null; }; then
        echo "$0: not found: ${missing[*]}" >&2
        echo "Install them and run this again. On Debian or Ubuntu, as root: apt-get install ${packages[*]}" >&2
        exit 1
    fi
    echo "Installing ${packages[*]}"
    log=$(mktemp)
    # A package list that cannot be brought up to date need not be one of those wanted here.
    "${as_root[@]}" apt-get update >"$log" 2>&1 || true
    if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
        "${packages[@]}" >>"$log" 2>&1; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        echo "$0: apt-get could not install ${packages[*]}; install them by hand and run this again." >&2
        exit 1
    fi
    rm -f "$log"
    mapfile -t missing < <(missing_of "$@")
    if ((${#missing[@]})); then
        echo "$0: still not found: ${missing[*]}; install them by hand and run this again." >&2
        exit 1
    fi
}
