#!/usr/bin/env bash
# Builds orpSP and uses it on real recordings: mixes two into one, converts one, limits one, measures one, draws its
# spectrum and sends it through the codes of the telephone; and makes a tone and noise.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/packages.sh

need cmake ninja-build g++ pkg-config libhwy-dev libcli11-dev libsndfile1-dev alsa-utils

# Without tests, unless ./test.sh has set the build up before.
mkdir -p build
echo "Building (log: build/run.log)"
{
  [[ -f build/release/build.ninja ]] || cmake --preset release -DORPSP_TESTS=OFF -DORPSP_BENCH=OFF
  cmake --build --preset release --target wavtool -- -j "$(nproc)"
} >build/run.log 2>&1 || {
  cat build/run.log >&2
  exit 1
}

sounds=/usr/share/sounds/alsa
build/release/bin/wavtool info
echo
echo "Mixing two recordings, $sounds/Front_Left.wav and, at half its level, $sounds/Rear_Right.wav:"
build/release/bin/wavtool mix build/mix.wav "$sounds/Front_Left.wav" 1 "$sounds/Rear_Right.wav" 0.5 | tee build/mix.log
speed=$(sed -n 's/.*mixed in \(.* ms\), \([0-9]* times\) real time.*/The library took \1 for it, \2 less than it takes to play./p' build/mix.log)
echo
echo "Two voices now speak at once, the second one more softly. $speed"
echo "The mix is in $PWD/build/mix.wav"
echo
echo "The first recording in 8-bit samples:"
build/release/bin/wavtool convert "$sounds/Front_Left.wav" build/convert.wav --bits 8
echo
echo "The first recording, nowhere louder than 12 dB below full scale:"
build/release/bin/wavtool limit "$sounds/Front_Left.wav" build/limit.wav --level -12
echo
echo "They are in $PWD/build/convert.wav and $PWD/build/limit.wav"
echo
echo "What the first recording is like:"
build/release/bin/wavtool stats "$sounds/Front_Left.wav"
echo
echo "What frequencies it holds:"
build/release/bin/wavtool spectrum "$sounds/Front_Left.wav" build/spectrum.svg
echo
echo "The picture is $PWD/build/spectrum.svg; a browser shows it."
echo
echo "The first recording in the 8-bit codes of the telephone, A-law and mu-law, and decoded again:"
build/release/bin/wavtool alaw "$sounds/Front_Left.wav" build/alaw.wav
build/release/bin/wavtool mulaw "$sounds/Front_Left.wav" build/mulaw.wav
echo
echo "A tone and noise:"
build/release/bin/wavtool tone build/tone.wav --frequency 440
build/release/bin/wavtool noise build/noise.wav
echo
echo "They are in $PWD/build: alaw.wav, mulaw.wav, tone.wav and noise.wav"
