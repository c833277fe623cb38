#!/usr/bin/env bash
# Tests scripts/wine_run.sh with programs that play a wine that starts, fails or hangs.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

# The stand-in for wine: its n-th start does what its n-th argument says, and the last argument from there on.
cat >wine <<'END'
#!/usr/bin/env bash
echo $$ >>starts
n=$(wc -l <starts)
((n <= $#)) || n=$#
case ${!n} in
  works) echo "first line"; sleep 0.3; echo "last line" ;;
  works-in-silence) ;;
  works-slowly) echo "first line"; sleep 2; echo "last line" ;;
  fails) echo "first line"; exit 3 ;;
  fails-in-silence) exit 53 ;;
  fails-to-start) echo "wine: could not load kernel32.dll, status c0000135"; exit 53 ;;
  crashes) echo "wine: Unhandled page fault on read access to 0000 (thread 0024), starting debugger..."; exit 5 ;;
  hangs) echo "first line"; sleep 60 & wait ;;
  hangs-in-silence) sleep 60 & wait ;;
  complains-and-hangs) echo "wine client error:0: write: Bad file descriptor"; sleep 60 & wait ;;
esac
END
chmod +x wine
export ORPSP_WINE=./wine ORPSP_WINE_SILENCE=1

faults=0
runs() {  # a process of this group that is no zombie
  ps -e -o pgid=,stat= | awk -v group="$1" '$1 == group && $2 !~ /^Z/ { found = 1 } END { exit !found }'
}
# expect STATUS STARTS LINES ACTION...: LINES is what is said, one word a line: the first of each line but wine_run's.
expect() {
  local status=0 wanted="status $1, $2 starts, said $3" got
  rm -f starts
  timeout 5 "$here/wine_run.sh" "${@:4}" >out 2>&1 || status=$?
  got="status $status, $(wc -l <starts) starts, said $(awk '{ print $1 }' out | paste -sd' ')"
  for process in $(<starts); do
    if runs "$process"; then got+=", left something running"; fi
  done
  if [[ $got != "$wanted" ]]; then
    echo "FAILED: ${*:4}: $got; wanted: $wanted"
    faults=$((faults + 1))
  fi
}
expect 0 1 "first last" works
expect 0 1 "" works-in-silence
expect 0 1 "first last" works-slowly
expect 3 1 "first" fails works
expect 5 1 "wine:" crashes works
expect 0 2 "wine_run: first last" fails-in-silence works
expect 0 2 "wine: wine_run: first last" fails-to-start works
expect 53 3 "wine_run: wine_run: wine_run:" fails-in-silence
expect 0 2 "wine_run: first last" hangs-in-silence works
expect 0 3 "wine wine_run: wine_run: first last" complains-and-hangs hangs-in-silence works
expect 124 3 "wine_run: wine_run: wine_run:" hangs-in-silence
# A hang after the first line is for the caller's time limit, here five seconds; the line has been passed on.
expect 124 1 "first" hangs works

# A line is passed on before the program ends.
rm -f starts
"$here/wine_run.sh" hangs >out 2>&1 &
sleep 1.5
grep -q "first line" out || { echo "FAILED: the first line waits for the end"; faults=$((faults + 1)); }
kill -TERM $!
wait $! || true
! runs "$(<starts)" || { echo "FAILED: the program outlives the script"; faults=$((faults + 1)); }
((faults == 0)) && echo "wine_run.sh does what it should"
