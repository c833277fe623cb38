#!/usr/bin/env bash
# Builds everything and runs every test: on Linux, and against the Windows DLL under wine.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/packages.sh
. scripts/stages.sh
. scripts/wine.sh

stage "packages" need cmake ninja-build g++ pkg-config binutils libhwy-dev libcli11-dev libsndfile1-dev libgtest-dev \
  googletest libbenchmark-dev libvolk2-dev libsleef-dev libfftw3-dev libmpfr-dev alsa-utils g++-mingw-w64-x86-64-posix \
  llvm wine wine64

stage "build for Linux" build release -DORPSP_TESTS=ON -DORPSP_BENCH=ON
stage "test on Linux" check release
# The widest kernels are tested on Linux; here every second width says enough of the other compiler and calling convention.
stage "build for Windows" build windows "-DORPSP_WIDTHS=128;256"
trap wine_end EXIT
stage "wine" wine_begin
stage "test on Windows" check windows
