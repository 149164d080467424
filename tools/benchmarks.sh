#!/bin/bash
# Runs every benchmark of build/release and prints their tables.
#   tools/benchmarks.sh [OPTION of the benchmark library...]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

shopt -s nullglob
programs=(build/release/bin/bench_*)
if [ ${#programs[@]} -eq 0 ]; then
    echo "benchmarks: there is none in build/release/bin. Build first: cmake --build build/release" >&2
    exit 1
fi
for program in "${programs[@]}"; do
    echo "-- ${program##*/}"
    QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 "$program" --benchmark_color=false "$@"
done
