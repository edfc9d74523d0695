# Debian packages, installed only when one is missing. Sourced by bash after common.sh.

# What building and every test lane need on the machine itself. The Wine root has its own list.
PACKAGES="
    cmake ninja-build g++ g++-mingw-w64-i686-posix binutils-mingw-w64-i686 mingw-w64-tools
    googletest ccache
    mmdebstrap arch-test bubblewrap
    xvfb xauth x11-utils xdotool imagemagick pulseaudio pulseaudio-utils
    clang clang-format clang-tidy libclang-rt-dev nsis mingw-w64-common python3 ca-certificates util-linux"

# need_packages NAME...: installs those that are missing and says so; milliseconds when none is.
need_packages() {
    local missing
    missing=$(comm -23 \
        <(printf '%s\n' "$@" | sort) \
        <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null |
            sed -n 's/^installed //p' | sort -u))
    [ -n "$missing" ] || return 0
    say "Installing Debian packages that are missing:" $missing
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q update
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y --no-install-recommends install $missing
}
