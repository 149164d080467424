#!/bin/bash
# Builds the fuzzers with clang and lets each run for a while. What made one fail stays in build/fuzz/found.
#   tools/fuzz.sh [SECONDS]     60 unless given
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds=${1:-60}

clang=$(command -v clang++ || command -v clang++-14) || {
    echo "fuzz: there is no clang++. Install it: tools/install-packages.sh fuzz" >&2
    exit 1
}
cmake -S . -B build/fuzz -G Ninja --log-level=WARNING -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER="$clang" \
    -DNORVANE_BUILD_FUZZERS=ON -DNORVANE_BUILD_EDITOR=OFF -DNORVANE_BUILD_BENCHMARKS=OFF -DNORVANE_WARNINGS_AS_ERRORS=OFF \
    -DNORVANE_SANITIZE=fuzzer-no-link,address,undefined,float-divide-by-zero
cmake --build build/fuzz --target fuzz_print_settings

corpus=build/fuzz/corpus/print_settings
mkdir -p "$corpus" build/fuzz/found
for record in tests/data/printsettings/*.hex; do
    sed '/^#/d; s/ .*//' "$record" | python3 -c 'import sys; sys.stdout.buffer.write(bytes.fromhex(sys.stdin.read()))' \
        >"$corpus/$(basename "$record" .hex)"
done
export LSAN_OPTIONS=suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
build/fuzz/bin/fuzz_print_settings -max_total_time="$seconds" -max_len=256 -timeout=10 -use_value_profile=1 \
    -artifact_prefix=build/fuzz/found/ "$corpus"
