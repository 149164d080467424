#!/bin/bash
# Checks that the repository behaves under add_subdirectory(): configures examples/embedded and looks at its targets.
#   tests/examples/embedded.sh BUILD_FOLDER [--build]    --build also builds its program and runs it
set -euo pipefail
here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
root=$here/../..
build=$1

mkdir -p "$build/.cmake/api/v1/query"
touch "$build/.cmake/api/v1/query/codemodel-v2"
launcher=()
! command -v ccache >/dev/null || launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S "$root/examples/embedded" -B "$build" -G Ninja --log-level=WARNING "${launcher[@]}"
python3 "$here/check_embedded_targets.py" "$build"

if [ "${2-}" = --build ]; then
    cmake --build "$build"
    QT_QPA_PLATFORM=offscreen python3 "$here/run_example.py" "$(find "$build" -name embedded_host -type f)" \
        "the label shows 24"
fi
