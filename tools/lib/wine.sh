# Running Windows programs. Sourced by bash after common.sh, packages.sh and wine-root.sh.
#
# A stage is where Windows programs run: a Wine prefix with its server, a display, a sound sink.
# Its name tells its screen: "96" and "192" are dots per inch; "person" is the person's own
# display and sound. Everything of a stage lies in build/stage/NAME of this checkout, so that
# checkouts and stages never meet. What a stage leaves running ends by itself after a minute
# without a program, or at once by stage_stop.

STAGE=${TUNOVKA_STAGE:-96}
STAGE_DIR=$BUILD/stage/$STAGE
PREFIX=$STAGE_DIR/prefix
STAGE_IDLE=60

# Unix sockets need short paths, checkouts have long ones.
STAGE_RUN=/tmp/tunovka-$(id -u)-$(printf '%s' "$STAGE_DIR" | sha256sum | cut -c 1-12)

case $STAGE in
    192) STAGE_DPI=192 STAGE_SCREEN=2560x2048x24 ;;
    *)   STAGE_DPI=96  STAGE_SCREEN=1280x1024x24 ;;
esac

# in_wine COMMAND...: a command where Wine is: this machine's own files, with the system folders of
# the Wine root in place of this machine's, so that every path outside them is the same inside.
# A new prefix or display needs nothing else. Tests run without root's powers, so that read-only
# files and forbidden folders are that to them too; a person keeps theirs.
in_wine() {
    local root args name
    root=$(wine_root)
    args=(--dev-bind / / --die-with-parent --clearenv
        --bind "$root/usr" /usr --bind "$root/etc" /etc --bind "$TOP" "$TOP"
        --setenv HOME "$STAGE_DIR/home" --setenv PATH /usr/bin:/bin:/usr/sbin:/sbin
        --setenv USER tester --setenv LOGNAME tester --setenv TZ Europe/Bratislava
        --setenv LC_ALL sk_SK.UTF-8
        --setenv WINEPREFIX "$PREFIX" --setenv WINEDEBUG "${WINEDEBUG:--all}"
        --setenv WINEDLLOVERRIDES 'mscoree,mshtml='
        --setenv XDG_CACHE_HOME "$STAGE_DIR/home/.cache")
    [ "$STAGE" = person ] || args+=(--cap-drop ALL)
    for name in DISPLAY XAUTHORITY PULSE_SERVER PULSE_COOKIE XDG_RUNTIME_DIR TERM \
        ${!TUNOVKA_*} ${!GTEST_*}; do
        [ -z "${!name:-}" ] || args+=(--setenv "$name" "${!name}")
    done
    bwrap "${args[@]}" "$@"
}

# Makes the prefix of the stage when it is not there or was made by another recipe (about 11 s).
ensure_prefix() {
    local recipe
    recipe=$(cat "$TOP/tools/lib/prefix.reg" <(wine_root) <(echo $STAGE_DPI) | sha256sum)
    [ "$(cat "$STAGE_DIR/prefix.made" 2>/dev/null)" != "$recipe" ] || return 0
    say "Making a Wine prefix in $PREFIX"
    stage_stop_wine
    rm -rf "$PREFIX" "$STAGE_DIR/prefix.made"
    mkdir -p "$PREFIX" "$STAGE_DIR/home"
    { cat "$TOP/tools/lib/prefix.reg"
      printf '\n[HKEY_CURRENT_USER\\Control Panel\\Desktop]\n"LogPixels"=dword:%08x\n' $STAGE_DPI
    } > "$STAGE_DIR/prefix.reg"
    # DISPLAY is empty: no window may appear, and the desktop must not keep a display of today.
    DISPLAY= detached in_wine sh -c 'wineboot -i && wine regedit /S "$1" && wineserver -k -w' \
        sh "$STAGE_DIR/prefix.reg" || die "Wine could not make its prefix; see $STAGE_DIR/log"
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

# Whether process $2 still runs and is program $1.
runs() { [ -n "$2" ] && [ "$(cat "/proc/$2/comm" 2>/dev/null)" = "$1" ]; }

ensure_display() {
    local pid
    if runs Xvfb "$(cat "$STAGE_DIR/display.pid" 2>/dev/null)"; then return 0; fi
    rm -f "$STAGE_DIR/display"
    detached start_display
    for _ in $(seq 100); do
        [ -s "$STAGE_DIR/display" ] && return 0
        sleep 0.05
    done
    die "Xvfb did not start; see $STAGE_DIR/log"
}

# Xvfb picks a free display itself and writes its number when it is ready.
start_display() {
    setsid Xvfb -displayfd 3 -screen 0 "$STAGE_SCREEN" -nolisten tcp -terminate $STAGE_IDLE \
        3>"$STAGE_DIR/display" &
    echo $! > "$STAGE_DIR/display.pid"
}

ensure_sound() {
    if runs pulseaudio "$(cat "$STAGE_DIR/sound.pid" 2>/dev/null)"; then return 0; fi
    rm -f "$STAGE_RUN/pulse"
    detached start_sound
    for _ in $(seq 100); do
        [ -S "$STAGE_RUN/pulse" ] && return 0
        sleep 0.05
    done
    die "pulseaudio did not start; see $STAGE_DIR/log"
}

start_sound() {
    HOME=$STAGE_DIR/home PULSE_RUNTIME_PATH=$STAGE_RUN setsid pulseaudio -n --daemonize=no \
        --use-pid-file=no --exit-idle-time=$STAGE_IDLE \
        --load="module-native-protocol-unix socket=$STAGE_RUN/pulse auth-anonymous=1" \
        --load="module-null-sink sink_name=null rate=44100" &
    echo $! > "$STAGE_DIR/sound.pid"
}

# Starts what of the stage does not run yet, and sets DISPLAY and PULSE_SERVER. A DISPLAY that the
# caller gives is used as it is. Costs milliseconds when all is there.
stage_start() {
    ensure_wine_root
    mkdir -p "$STAGE_DIR/home" "$STAGE_RUN"
    with_lock "$STAGE_DIR/lock" stage_start_locked
    if [ "$STAGE" != person ]; then
        [ -n "${DISPLAY:-}" ] || export DISPLAY=:$(cat "$STAGE_DIR/display")
        export PULSE_SERVER=unix:$STAGE_RUN/pulse
    fi
}

stage_start_locked() {
    local display
    ensure_prefix
    if [ "$STAGE" != person ]; then
        [ -n "${DISPLAY:-}" ] || ensure_display
        ensure_sound
    fi
    # A Wine server that has shown windows on another display keeps its desktop there.
    display=${DISPLAY:-:$(cat "$STAGE_DIR/display" 2>/dev/null || true)}
    if [ "$(cat "$STAGE_DIR/display.wine" 2>/dev/null)" != "$display" ]; then
        stage_stop_wine
        echo "$display" > "$STAGE_DIR/display.wine"
    fi
}

stage_stop_wine() {
    [ ! -d "$PREFIX" ] || detached in_wine wineserver -k || true
}

# Ends what the stage left running. Its prefix stays.
stage_stop() {
    local name
    stage_stop_wine
    for name in Xvfb:display pulseaudio:sound; do
        local pid
        pid=$(cat "$STAGE_DIR/${name#*:}.pid" 2>/dev/null || true)
        if runs "${name%:*}" "$pid"; then kill "$pid"; fi
        rm -f "$STAGE_DIR/${name#*:}.pid"
    done
    rm -rf "$STAGE_RUN"
}

# drive_link LETTER FOLDER: makes the drive show the folder, which is made when it is missing.
drive_link() {
    local link=$PREFIX/dosdevices/${1,,}:
    mkdir -p "$2"
    [ "$(readlink "$link")" = "$2" ] || ln -sfn "$2" "$link"
}
