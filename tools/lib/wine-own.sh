# The machine's own Wine, used as it is where it really serves 32-bit windows. Sourced by bash after
# common.sh.

# Whether `wine` here runs the check program; asked once for each Wine, remembered in the cache.
own_wine_serves() {
    local wine verdict
    wine=$(command -v wine) || return 1
    verdict=$CACHE/own-wine-$(stat -Lc '%i-%Y-%s' "$wine")
    [ -f "$verdict" ] || with_lock "$CACHE/own-wine.lock" try_own_wine "$verdict"
    [ "$(cat "$verdict")" = yes ]
}

# A 64-bit Wine cannot start 32-bit programs, and one with its 32-bit half patched in starts them
# but paints no child windows: the check program looks at a pixel of one.
try_own_wine() {
    local place result=no
    [ ! -f "$1" ] || return 0
    say "Trying whether this machine's own Wine runs 32-bit windows"
    place=$(mktemp -d)
    i686-w64-mingw32-g++-posix -Os -s -static -mwindows -o "$place/check.exe" \
        "$TOP/tools/lib/wine-check.cpp" -lgdi32
    if env HOME="$place" WINEPREFIX="$place/prefix" WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml=' \
        timeout 120 xvfb-run -a wine "$place/check.exe" >/dev/null 2>&1 </dev/null; then result=yes; fi
    env WINEPREFIX="$place/prefix" PATH="$PATH:/usr/lib/wine" wineserver -k 2>/dev/null || true
    rm -rf "$place"
    say "It does: $result"
    echo $result > "$1"
}

# Makes the machine's Wine speak Slovak without changing the machine: prints the folder of locales.
own_locales() {
    local folder=$CACHE/locales
    [ -d "$folder/sk_SK.UTF-8" ] || {
        need_packages locales
        mkdir -p "$folder"
        localedef -i sk_SK -f UTF-8 "$folder/sk_SK.UTF-8" >&2
    }
    printf '%s\n' "$folder"
}
