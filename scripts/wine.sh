# Sourced: wine with a prefix of its own under build/, made once, so that tests that start at the same time find it ready.
export WINEPREFIX=$PWD/build/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml='
unset DISPLAY

wine_begin() {
  mkdir -p build
  [[ -f $WINEPREFIX/system.reg ]] || wineboot --init >/dev/null 2>&1 </dev/null
  wineserver --wait
}

# Nothing of wine stays behind: its processes would hold the script's output open.
wine_end() {
  timeout 20 wineserver --wait || wineserver --kill || true
}
