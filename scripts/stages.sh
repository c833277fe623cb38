# Sourced: stages of a script with their times, and the test runs of a build.
stage() {
  local name=$1 begin=$SECONDS
  shift
  echo "== $name"
  "$@"
  echo "== $name: $((SECONDS - begin)) s"
}

# build PRESET [cmake arguments]
build() {
  cmake --preset "$@"
  cmake --build --preset "$1" -- -j "$(nproc)"
}

# check PRESET: runs the tests; the summary is kept beside the build.
check() {
  ctest --preset "$1" -j "$(nproc)" --no-tests=error 2>&1 | tee "build/$1/ctest.log"
}
