# Sourced by the scripts beside it: building one preset, with one line that says so and the output only on failure.

# build_preset PRESET [TARGET...]
build_preset() {
  local preset=$1
  shift
  local log=build/$preset.log
  mkdir -p build
  echo "Building $preset"
  local command=(cmake --build --preset "$preset" --parallel "$(nproc)")
  [ $# -eq 0 ] || command+=(--target "$@")
  if ! { cmake --preset "$preset" && "${command[@]}"; } >"$log" 2>&1 </dev/null; then
    tail -n 60 "$log" >&2
    echo "$(basename "$0"): building $preset failed; the whole output is in $log" >&2
    return 1
  fi
}
