#!/usr/bin/env bash
# Runs a Windows program and passes on what it says while it says it.
#
# Now and then wine fails to start a program, or starts it and nothing happens. Our programs say something at once, and
# always before they fail. So a program is started again, three times in all, if it
#   - has said nothing within 30 s: it is ended;
#   - failed in silence, or with nothing but wine's word that it could not be started.
# Every further start is announced by a line that begins with "wine_run:"; scripts/stages.sh shows them. A program that
# has said something is left alone: a time limit set elsewhere ends it, and what it said is there.
set -um  # a job is a process group of its own: a program is ended with its children

starts=3 silence=${ORPSP_WINE_SILENCE:-30} wine=${ORPSP_WINE:-wine}  # scripts/wine_run_test.sh sets these two
said=$(mktemp) program=
end() {
  [[ -n $program ]] || return 0
  kill -KILL -- "-$program" 2>/dev/null
  wait "$program" 2>/dev/null
}
trap 'end; rm -f "$said"' EXIT
trap 'exit 143' HUP INT TERM

# Wine reports a program's crash in words of its own, too, but that is not for starting again.
has_spoken() {
  [[ -s $said ]] && grep -aqvE '^wine(64)?( client error)?:( [^U]|[^ ])' "$said"
}
runs() {
  kill -0 "$program" 2>/dev/null
}

for ((start = 1; start <= starts; ++start)); do
  ((start == 1)) || echo "wine_run: ${1##*/} $why: start $start"
  "$wine" "$@" >"$said" 2>&1 </dev/null &
  program=$!
  for ((deadline = SECONDS + silence; SECONDS < deadline; )); do
    if has_spoken || ! runs; then break; fi
    sleep 0.05
  done
  if has_spoken; then
    tail --follow --bytes=+1 --sleep-interval=0.1 --pid="$program" "$said" 2>/dev/null &
    reader=$!
    wait "$program" 2>/dev/null
    status=$?
    program=
    wait "$reader"  # in the background, since bash does not hear signals while a program in the foreground runs
    exit "$status"
  elif runs; then
    why="said nothing within $silence s" status=124
    end
  else
    wait "$program" 2>/dev/null
    status=$?
    why="failed in silence with status $status"
  fi
  program=
  cat "$said"
  ((status != 0)) || exit 0
done
echo "wine_run: ${1##*/} $why: given up"
exit "$status"
