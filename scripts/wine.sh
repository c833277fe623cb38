# Sourced: wine with a prefix of its own under build/, made once, so that tests that start at the same time find it ready.
export WINEPREFIX=$PWD/build/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml='
unset DISPLAY

wine_begin() {
  mkdir -p build
  [[ -f $WINEPREFIX/system.reg ]] || wineboot --init >/dev/null 2>&1 </dev/null
  wineserver --wait
  # A program that starts while the server of the last one is leaving would fail: the server stays for the next one. So
  # do its services; started by a test they would hold that test's output open.
  wineserver --persistent=60 >/dev/null 2>&1 </dev/null
  wine cmd /c exit >/dev/null 2>&1 </dev/null
}

# Nothing of wine stays behind: its processes would hold the script's output open.
wine_end() {
  wineserver --kill || true
}
