# Sourced by the scripts beside it: building one preset, with one line that says so and the output only on failure.

# Through sudo, what was built belongs to whoever the tree belongs to, so that they can go on without sudo.
hand_over_build() {
  [ "$(id -u)" -eq 0 ] || return 0
  # Wine takes no prefix that is another user's; it makes a new one in seconds.
  if [ "$(stat --format=%u .)" -ne 0 ] && [ -d build/wine-prefix ]; then
    WINEPREFIX=$PWD/build/wine-prefix wineserver --kill 2>/dev/null || true
    rm -rf build/wine-prefix
  fi
  chown -R --reference=. build
}

# build_preset PRESET [TARGET...]
build_preset() {
  local preset=$1
  shift
  local log=build/$preset.log
  mkdir -p build
  echo "Building $preset"
  local command=(cmake --build --preset "$preset" --parallel "$(nproc)")
  [ $# -eq 0 ] || command+=(--target "$@")
  local status=0
  { cmake --preset "$preset" && "${command[@]}"; } >"$log" 2>&1 </dev/null || status=$?
  hand_over_build
  if [ "$status" -ne 0 ]; then
    tail -n 60 "$log" >&2
    echo "$(basename "$0"): building $preset failed; the whole output is in $log" >&2
  fi
  return "$status"
}
