#!/usr/bin/env bash
# Keeps README.md true: the first program is examples/first.c, the table of families that of scripts/families.sh.
#   readme.sh --write   renews both
#   readme.sh --check   fails if one of them is out of date
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

renewed() {
  PROGRAM=$(<examples/first.c) TABLE=$(scripts/families.sh) awk '
    /^```$/ || /^<!-- end of families/ { inside = 0 }
    !inside { print }
    /^```c$/ { print ENVIRON["PROGRAM"]; inside = 1 }
    /^<!-- families:/ { print ENVIRON["TABLE"]; inside = 1 }' README.md
}

case ${1:-} in
  --write) text=$(renewed) && printf '%s\n' "$text" >README.md ;;
  --check) diff README.md <(renewed) >&2 || {
    echo "README.md is out of date; scripts/readme.sh --write renews it" >&2
    exit 1
  } ;;
  *) sed -n '2,4s/^# //p' "$0" ;;
esac
