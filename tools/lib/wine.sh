# Running Windows programs. Sourced by bash after common.sh, packages.sh and wine-root.sh.
#
# A stage is where Windows programs run: a Wine prefix with its server, a display, a sound sink.
# Its name tells its screen: "96", "120", "144" and "192" are dots per inch; "person" is the
# person's own display and sound. Everything of a stage lies in build/stage/NAME of this checkout,
# so that checkouts and stages never meet. What a stage leaves running ends by itself some minutes
# after the last program, or at once by stage_stop.

STAGE=${TUNOVKA_STAGE:-96}
STAGE_DIR=$BUILD/stage/$STAGE
PREFIX=$STAGE_DIR/prefix
STAGE_IDLE=60

# Unix sockets need short paths, checkouts have long ones.
STAGE_RUN=/tmp/tunovka-$(id -u)-$(printf '%s' "$STAGE_DIR" | sha256sum | cut -c 1-12)

case $STAGE in
    person)
        STAGE_DPI=$(xprop -root RESOURCE_MANAGER 2>/dev/null |
            sed -n 's/.*Xft\.dpi:[^0-9]*\([0-9]*\).*/\1/p' || true)
        STAGE_DPI=${STAGE_DPI:-96} STAGE_SCREEN= ;;
    96 | 120 | 144 | 192)
        STAGE_DPI=$STAGE
        STAGE_SCREEN=$((1280 * STAGE / 96))x$((1024 * STAGE / 96))x24 ;;
    *) die "TUNOVKA_STAGE is 96, 120, 144, 192 or person, not $STAGE" ;;
esac

# wine_command sets WINE, the words that start a command where Wine is: this machine's own files,
# with the system folders of the Wine root, if one is needed, in place of this machine's, so that
# every path outside them is the same inside. Tests run without root's powers, so that read-only files and forbidden
# folders are that to them too; a person keeps theirs.
#
# The clock is Bratislava's, by its rule: the Wine root has no table of zones that could be asked for
# a name.
wine_command() {
    local root name
    WINE=(bwrap --dev-bind / / --clearenv
        --setenv HOME "$STAGE_DIR/home" --setenv PATH "$PATH:/usr/lib/wine"
        --setenv USER tester --setenv LOGNAME tester --setenv TZ CET-1CEST,M3.5.0,M10.5.0/3
        --setenv LC_ALL sk_SK.UTF-8
        --setenv WINEPREFIX "$PREFIX" --setenv WINEDEBUG "${WINEDEBUG:--all}"
        --setenv WINEDLLOVERRIDES 'mscoree,mshtml=')
    if own_wine_serves; then
        WINE+=(--setenv LOCPATH "$(own_locales)")
    else
        root=$(wine_root)
        WINE+=(--bind "$root/usr" /usr --bind "$root/etc" /etc --bind "$TOP" "$TOP"
            --setenv PATH /usr/bin:/bin:/usr/sbin:/sbin)
    fi
    [ "$STAGE" = person ] || WINE+=(--cap-drop ALL)
    for name in DISPLAY XAUTHORITY PULSE_SERVER PULSE_COOKIE XDG_RUNTIME_DIR TERM \
        ${!TUNOVKA_*} ${!GTEST_*}; do
        [ -z "${!name:-}" ] || WINE+=(--setenv "$name" "${!name}")
    done
}

# in_wine COMMAND...: runs a command where Wine is.
in_wine() {
    wine_command
    "${WINE[@]}" "$@"
}

# Makes the prefix of the stage when it is not there or was made by another recipe (about 11 s).
ensure_prefix() {
    local recipe
    recipe=$(cat "$TOP"/tools/lib/{prefix.reg,fonts.conf,keeper.cpp} <(wine_root) <(echo $STAGE_DPI) | sha256sum)
    [ "$(cat "$STAGE_DIR/prefix.made" 2>/dev/null)" != "$recipe" ] || return 0
    say "Making a Wine prefix in $PREFIX"
    stage_stop_wine
    rm -rf "$PREFIX" "$STAGE_DIR/prefix.made"
    # Smooth letters, as Windows shows them; the fonts' own tables would switch that off.
    mkdir -p "$PREFIX" "$STAGE_DIR/home/.config/fontconfig"
    cp "$TOP/tools/lib/fonts.conf" "$STAGE_DIR/home/.config/fontconfig/"
    { cat "$TOP/tools/lib/prefix.reg"
      printf '\n[HKEY_CURRENT_USER\\Control Panel\\Desktop]\n"LogPixels"=dword:%08x\n' $STAGE_DPI
    } > "$STAGE_DIR/prefix.reg"
    # DISPLAY is empty: no window may appear, and the desktop must not keep a display of today.
    DISPLAY= detached in_wine sh -c 'wine wineboot -i && wine regedit /S "$1" && wineserver -k -w' \
        sh "$STAGE_DIR/prefix.reg" || die "Wine could not make its prefix; see $STAGE_DIR/log"
    i686-w64-mingw32-g++-posix -Os -s -static -mwindows -o "$STAGE_DIR/keeper.exe" \
        "$TOP/tools/lib/keeper.cpp" || die "The compiler failed."
    # Wine counts the drives when its server starts: both exist from then on.
    drive_link e "$STAGE_DIR/drive-e"
    drive_link t "$STAGE_DIR/scratch"
    echo "$recipe" > "$STAGE_DIR/prefix.made"
}

# Runs a command that leaves servers behind: they get neither our terminal or pipes nor our lock.
detached() {
    ( [ -z "${LOCK_FD:-}" ] || eval "exec $LOCK_FD>&-"
      exec </dev/null >>"$STAGE_DIR/log" 2>&1
      "$@" )
}

# runs PATTERN FILE: whether the process whose number FILE holds still runs, its name like PATTERN.
runs() {
    local pid comm=
    read -r pid 2>/dev/null <"$2" && read -r comm 2>/dev/null <"/proc/$pid/comm" && [[ $comm =~ ^($1) ]]
}

# Waits up to 10 seconds for a command to succeed.
wait_for() {
    local i
    for ((i = 0; i < 200; i++)); do
        if "$@" 2>/dev/null; then return 0; fi
        sleep 0.05
    done
    return 1
}

ensure_display() {
    if runs Xvfb "$STAGE_DIR/display.pid"; then return 0; fi
    rm -f "$STAGE_DIR/display"
    detached start_display
    wait_for test -s "$STAGE_DIR/display" || die "Xvfb did not start; see $STAGE_DIR/log"
}

# Xvfb picks a free display itself and writes its number when it is ready.
start_display() {
    setsid Xvfb -displayfd 3 -screen 0 "$STAGE_SCREEN" -wr -nolisten tcp -terminate $STAGE_IDLE \
        3>"$STAGE_DIR/display" &
    echo $! > "$STAGE_DIR/display.pid"
}

ensure_sound() {
    if runs pulseaudio "$STAGE_DIR/sound.pid"; then return 0; fi
    rm -f "$STAGE_RUN/pulse"
    detached start_sound
    wait_for test -S "$STAGE_RUN/pulse" || die "pulseaudio did not start; see $STAGE_DIR/log"
}

start_sound() {
    HOME=$STAGE_DIR/home PULSE_RUNTIME_PATH=$STAGE_RUN setsid pulseaudio -n --daemonize=no \
        --use-pid-file=no --exit-idle-time=$((10 * STAGE_IDLE)) \
        --load="module-native-protocol-unix socket=$STAGE_RUN/pulse auth-anonymous=1" \
        --load="module-null-sink sink_name=null rate=44100" &
    echo $! > "$STAGE_DIR/sound.pid"
}

ensure_wine_server() {
    touch "$STAGE_DIR/used"
    # A server that has shown windows keeps its desktop on their display.
    if runs 'wineserver|bwrap' "$STAGE_DIR/wine.pid" &&
        [ "$(cat "$STAGE_DIR/wine.display")" = "$DISPLAY" ]; then return 0; fi
    stage_stop_wine
    detached start_wine_server
    detached in_wine wine wineboot
    echo "$DISPLAY" > "$STAGE_DIR/wine.display"
}

start_wine_server() {
    wine_command
    setsid "${WINE[@]}" wineserver -f -p5 &
    echo $! > "$STAGE_DIR/wine.pid"
    keep_wine_awake $! &
}

# The helpers that Wine starts beside a program, the desktop among them, keep the output they were
# given and would hold a test's pipe open after its end. So a program that does nothing keeps them
# running, with none of our output, until the stage has been idle for a while.
keep_wine_awake() {
    in_wine wine "$STAGE_DIR/keeper.exe" &
    while runs 'wineserver|bwrap' "$STAGE_DIR/wine.pid" &&
        [ "$(cat "$STAGE_DIR/wine.pid")" = "$1" ]; do
        sleep 2
        [ -n "$(find "$STAGE_DIR/used" -newermt "-$STAGE_IDLE seconds")" ] ||
            with_lock "$STAGE_DIR/lock" stop_idle_wine
    done
}

# Programs hold a shared lock on the file "used" while they run.
stop_idle_wine() {
    [ -n "$(find "$STAGE_DIR/used" -newermt "-$STAGE_IDLE seconds")" ] ||
        ! flock -n -x "$STAGE_DIR/used" true || stage_stop_wine
}

# Starts what of the stage does not run yet, and sets DISPLAY and PULSE_SERVER. A DISPLAY that the
# caller gives is used as it is. Costs milliseconds when all is there.
stage_start() {
    own_wine_serves || ensure_wine_root
    mkdir -p "$STAGE_DIR/home" "$STAGE_RUN"
    with_lock "$STAGE_DIR/lock" stage_start_locked
}

stage_start_locked() {
    ensure_prefix
    if [ "$STAGE" != person ]; then
        if [ -z "${DISPLAY:-}" ]; then
            ensure_display
            export DISPLAY=:$(cat "$STAGE_DIR/display")
        fi
        ensure_sound
        export PULSE_SERVER=unix:$STAGE_RUN/pulse
    fi
    ensure_wine_server
}

stage_stop_wine() {
    [ ! -d "$PREFIX" ] || detached in_wine wineserver -k -w || true
    rm -f "$STAGE_DIR/wine.pid"
}

# stop_server PATTERN FILE: ends the process whose number FILE holds, if its name is like PATTERN.
stop_server() {
    if runs "$1" "$2"; then kill "$(cat "$2")"; fi
    rm -f "$2"
}

# Ends what the stage left running. Its prefix stays.
stage_stop() {
    stage_stop_wine
    stop_server Xvfb "$STAGE_DIR/display.pid"
    stop_server pulseaudio "$STAGE_DIR/sound.pid"
    rm -rf "$STAGE_RUN"
}

# drive_link LETTER FOLDER: makes the drive show the folder, which is made when it is missing.
drive_link() {
    local link=$PREFIX/dosdevices/${1,,}:
    mkdir -p "$2"
    [ "$(readlink "$link")" = "$2" ] || ln -sfn "$2" "$link"
}
