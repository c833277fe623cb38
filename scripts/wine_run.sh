#!/usr/bin/env bash
# Runs a Windows program. Now and then wine fails to start one, which then has said nothing; a test says something before
# it fails. So what failed in silence is started again.
said=$(mktemp)
trap 'rm -f "$said"' EXIT
for _ in 1 2 3; do
  status=0
  wine "$@" >"$said" 2>&1 || status=$?
  [[ $status -ne 0 && ! -s $said ]] || break
  sleep 1
done
cat "$said"
exit "$status"
