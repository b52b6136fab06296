#!/usr/bin/env bash
# Benchmarks, each with a twin that does the same work directly on the engine. Prints a line for each: name,
# ours, twin, ratio, the bar, and "ok" or "over". Exits with 1 if any is over.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

install_packages
mkdir -p build
build release --target veltrane_bench > build/bench-build.log 2>&1 || { cat build/bench-build.log; exit 1; }
QT_QPA_PLATFORM=offscreen exec build/release/bin/veltrane_bench "$@"
