#!/usr/bin/env bash
# Formats the sources in place; with --check only says what differs.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
action=(-i)
[[ ${1:-} != --check ]] || action=(--dry-run -Werror)
find include src tests bench examples -name '*.h' -o -name '*.cpp' -o -name '*.c' -o -name '*.inc' | sort |
  xargs clang-format "${action[@]}"
