# Sourced: `need PACKAGE...` installs the Debian packages that are missing. With nothing missing it is quick and needs no
# network.
export DEBIAN_FRONTEND=noninteractive

need() {
  local package missing=() root=()
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This is not Debian or Ubuntu. Install what these packages hold, then use cmake directly: $*" >&2
    return 1
  fi
  for package in "$@"; do
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
  done
  ((${#missing[@]})) || return 0
  ((EUID == 0)) || root=(sudo)
  echo "Installing ${missing[*]}"
  "${root[@]}" apt-get update -q
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
}
