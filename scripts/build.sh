# Shared by the commands at the top: sourced, not run.

# build PRESET [TARGET...]: configures where that is still to do, and builds; quiet unless something fails.
build() {
    local preset=$1 log
    shift
    mkdir -p build
    log="build/$preset.log"
    if [ ! -f "build/$preset/build.ninja" ]; then
        echo "Configuring $preset"
        if ! cmake --preset "$preset" >"$log" 2>&1; then
            tail -n 40 "$log" >&2
            echo "The project couldn't be configured; the lines above say why." >&2
            return 1
        fi
    fi
    echo "Building $preset"
    if ! cmake --build --preset "$preset" ${1:+--target "$@"} >"$log" 2>&1; then
        grep -E -A 12 'error|FAILED' "$log" | head -n 60 >&2 || tail -n 40 "$log" >&2
        echo "The build failed; the lines above say where." >&2
        return 1
    fi
}
