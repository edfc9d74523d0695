# The private 32-bit Wine: a small Debian root with Wine in it, shared by all checkouts of this
# person. Needed because amd64 Debian 12 cannot install a 32-bit Wine whose windows paint.
# Sourced by bash after common.sh and packages.sh.

# The recipe: the name of the root holds its hash, so a changed recipe makes a new root.
WINE_ROOT_SUITE=trixie
WINE_ROOT_LOCALE=sk_SK
WINE_ROOT_PACKAGES=wine,wine32,fonts-liberation,fonts-dejavu-core,fonts-wine,gstreamer1.0-plugins-base,gstreamer1.0-plugins-good,gstreamer1.0-plugins-ugly,gstreamer1.0-libav,libpulse0,locales

# Wine's own Tahoma lacks some Slovak letters and, being there, cannot be replaced: it goes.
WINE_ROOT_HOOK="chroot \"\$1\" localedef -i $WINE_ROOT_LOCALE -f UTF-8 $WINE_ROOT_LOCALE.UTF-8;
    rm -f \"\$1\"/usr/share/wine/fonts/tahoma*.ttf"

wine_root() {
    local recipe
    recipe=$(printf '%s\n' "$WINE_ROOT_HOOK" $WINE_ROOT_SUITE $WINE_ROOT_PACKAGES | sha256sum)
    printf '%s/wine-%s\n' "$CACHE" "${recipe:0:12}"
}

# The address of the Debian mirror that this machine uses already.
debian_mirror() {
    local mirror
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Origin: Debian' 'Created-By: Packages' |
        grep -v security | head -n 1 || true)
    printf '%s\n' "${mirror:-http://deb.debian.org/debian}"
}

# Makes the root when it is not there. Built beside its final name and renamed, so that a root
# that has its name is whole.
ensure_wine_root() {
    [ -d "$(wine_root)" ] || with_lock "$CACHE/wine-root.lock" build_wine_root
}

build_wine_root() {
    local root fresh
    root=$(wine_root)
    fresh=$root.unfinished
    [ ! -d "$root" ] || return 0
    need_packages mmdebstrap arch-test bubblewrap
    say "Building a private 32-bit Wine in $root (about a minute, 1 GB, once)"
    { as_root rm -rf "$fresh" &&
      as_root mmdebstrap --quiet --mode=root --architectures=i386 --variant=apt \
        --aptopt='APT::Install-Recommends "false"' \
        --aptopt='Acquire::Check-Valid-Until "false"' \
        --customize-hook="$WINE_ROOT_HOOK" \
        --include="$WINE_ROOT_PACKAGES" \
        "$WINE_ROOT_SUITE" "$fresh" "deb $(debian_mirror) $WINE_ROOT_SUITE main" &&
      as_root mv "$fresh" "$root"; } || die "The private Wine could not be built."
}
