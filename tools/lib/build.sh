# Building. Sourced by bash after common.sh.

# build_preset NAME [TARGET...]: configures the preset when that is needed, and builds.
build_preset() {
    local preset=$1 log=$BUILD/$1.log
    shift
    mkdir -p "$BUILD"
    if [ ! -f "$BUILD/$preset/build.ninja" ] ||
        [ "$TOP/CMakePresets.json" -nt "$BUILD/$preset/build.ninja" ]; then
        say "Configuring $preset"
        (cd "$TOP" && cmake --preset "$preset") >"$log" 2>&1 || { cat "$log" >&2; die "CMake failed."; }
    fi
    say "Building $preset"
    cmake --build "$BUILD/$preset" ${1:+--target "$@"} >"$log" 2>&1 ||
        { tail -n 60 "$log" >&2; die "The build failed; the whole output is in $log"; }
}
