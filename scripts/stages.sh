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

# check PRESET: runs the tests; the summary is kept beside the build, and what was started again under wine is shown.
check() {
  local status=0 again
  rm -f build/"$1"/tests/digests-*.txt
  ctest --preset "$1" -j "$(nproc)" --no-tests=error 2>&1 | tee "build/$1/ctest.log" || status=$?
  again=$(grep -ah '^wine_run:' "build/$1/Testing/Temporary/LastTest.log" || true)
  [[ -z $again ]] || echo "$again" | tee -a "build/$1/ctest.log"
  return "$status"
}

# leave_out PRESET REASON: instead of check.
leave_out() {
  mkdir -p "build/$1"
  rm -f build/"$1"/tests/digests-*.txt
  echo "left out: $2" | tee "build/$1/ctest.log"
}

forget_checks() {
  rm -f build/*/ctest.log
}

# Last of all, whatever happened: the summary of every test run, what they left out, and the sum of them.
summary() {
  local preset skipped again all_skipped=0 logs=()
  echo "== all stages: $SECONDS s"
  for preset in release windows asan; do
    [[ -f build/$preset/ctest.log ]] || continue
    logs+=("build/$preset/ctest.log")
    grep -a -e 'tests passed' -e 'left out' "build/$preset/ctest.log" | sed "s/^/$preset: /" || true
    skipped=$(sed -nE 's/.* Test +#[0-9]+: ([^ ]+) .*\*\*\*Skipped.*/\1/p' "build/$preset/ctest.log")
    [[ -z $skipped ]] || all_skipped=$((all_skipped + $(wc -l <<<"$skipped")))
    skipped=$(sed -nE 's/.*\.(([un]8-)?[0-9]+)$/\1/p' <<<"$skipped" | sort -u | paste -sd' ')
    [[ -z $skipped ]] || echo "$preset: $(wc -w <<<"$skipped") configurations skipped for lack of a processor: $skipped"
    again=$(grep -ac '^wine_run:' "build/$preset/ctest.log" || true)
    ((again == 0)) || echo "$preset: programs started again under wine: $again"
  done
  ((${#logs[@]})) || return 0
  cat "${logs[@]}" | sed -n 's/.*, \([0-9]*\) tests failed out of \([0-9]*\)$/\1 \2/p' |
    awk -v skipped="$all_skipped" '
      { failed += $1; all += $2 }
      END { print all - failed - skipped " passed, " failed " failed" }'
}
