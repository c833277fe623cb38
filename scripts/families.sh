#!/usr/bin/env bash
# Prints the table of families: how many exports the library has (src/exports/*.inc) out of all that belong to it
# (tests/exports.txt, whose comment lines name the families).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The export's name may stand on the line after ORPS_EXPORT(.
cat src/exports/*.inc | tr '\n' ' ' | grep -oE 'ORPS_EXPORT[A-Z_]*\( *orps[A-Za-z0-9_]+' | grep -oE 'orps[A-Za-z0-9_]+$' |
  awk '
    NR == FNR { has[$1] = 1; next }
    /^# / {  # "# subsystem: family (count)"
      subsystem = $2; sub(/:$/, "", subsystem)
      family = $0; sub(/^# [^:]*: /, "", family); sub(/ \([0-9]*\)$/, "", family)
      if (!(subsystem in count)) order[++subsystems] = subsystem
      families[subsystem, ++count[subsystem]] = family
    }
    /^orps/ {
      ++size[subsystem, family]; ++all
      if ($1 in has) { ++got[subsystem, family]; ++there }
    }
    END {
      print "| subsystem | family | exports there | of |"
      print "|---|---|--:|--:|"
      for (s = 1; s <= subsystems; ++s) {
        name = order[s]; absent = missing = 0
        for (f = 1; f <= count[name]; ++f) {
          family = families[name, f]
          if (got[name, family]) printf "| %s | %s | %d | %d |\n", name, family, got[name, family], size[name, family]
          else { ++absent; missing += size[name, family] }
        }
        if (absent) printf "| %s | %d %s to come | 0 | %d |\n", name, absent, absent == 1 ? "family" : "families", missing
      }
      printf "| **all** | | **%d** | **%d** |\n", there, all
    }' - tests/exports.txt
