# Sourced by ./run, ./test and every other script of the tree: the packages, the compiler, the build.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# What configuring looks for, the tests' part included: one build tree serves both ./run and ./test.
build_packages=(clang-19 lld-19 libstdc++-12-dev libc6-dev cmake ninja-build pkg-config git python3
    libgtest-dev libre2-dev nlohmann-json3-dev libnl-3-dev libnl-genl-3-dev libdbus-1-dev libsystemd-dev
    libcurl4-openssl-dev qt6-base-dev qt6-svg-dev libxcb1-dev libxcb-xinput-dev)
run_packages=(iputils-ping ca-certificates qt6-wayland)
# What the suite holds our results against, and what its labs are made of.
test_packages=(bind9-dnsutils iproute2 dbus-daemon openssl python3-jsonschema procps util-linux
    xvfb openbox xfce4-panel trayer dunst at-spi2-core gir1.2-atspi-2.0 python3-gi python3-dbusmock python3-xlib xdotool xclip sway
    libglib2.0-bin fonts-dejavu-core)
check_packages=(clang-format-19 clang-tidy-19 libclang-rt-19-dev)
package_packages=(build-essential debhelper dpkg-dev)
# What packaging/check looks at the package with.
package_check_packages=(lintian appstream desktop-file-utils debootstrap iproute2 xvfb x11-utils python3-jsonschema)
# What ./screenshots takes its pictures with.
screenshot_packages=(imagemagick)
bench_packages=(libbenchmark-dev net-tools iproute2 bind9-dnsutils curl gcc openssl
    network-manager-gnome dbus-bin)

missing_packages() {
    local package
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Abbrev}' "$package" 2>/dev/null)" = "ii " ] || printf '%s\n' "$package"
    done
}

# install_packages NAME...: installs what is missing; touches no registry when nothing is.
install_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        printf 'This is no Debian. Tolvo needs, by their Debian names: %s\n' "$*" >&2
        return 0
    fi
    local missing as_root=()
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    [ "$(id -u)" = 0 ] || as_root=(sudo)
    printf 'Installing: %s\n' "${missing[*]}" >&2
    if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qq -y --no-install-recommends "${missing[@]}" >&2; then
        "${as_root[@]}" apt-get update -qq >&2
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qq -y --no-install-recommends "${missing[@]}" >&2
    fi
}

# configure PRESET [CMAKE-ARGUMENT...]: only when there is something new to configure.
configure() {
    local preset=$1 compiler=()
    shift
    if ! command -v clang++-19 >/dev/null && command -v clang++ >/dev/null; then
        compiler=(-DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++)
    fi
    (cd "$root" && cmake --preset "$preset" "${compiler[@]}" "$@" >"$root/.configure.log" 2>&1) || {
        cat "$root/.configure.log" >&2
        return 1
    }
    rm -f "$root/.configure.log"
}

# build PRESET [TARGET...]
build() {
    local preset=$1 target arguments=()
    shift
    for target in "$@"; do arguments+=(--target "$target"); done
    (cd "$root" && cmake --build --preset "$preset" "${arguments[@]}")
}
