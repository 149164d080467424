#!/bin/bash
# Installs a build into a folder, moves that, and lets examples/consumer find the package there; starts that program and the
# installed editor.
#   tests/examples/consumer.sh BUILD_FOLDER WORK_FOLDER
set -euo pipefail
here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
build=$1
work=$2

rm -rf -- "$work"
cmake --install "$build" --prefix "$work/first" >/dev/null
# whatever names a folder of the build or of the first place is found by this
mv -- "$work/first" "$work/installed"

cmake -S "$here/../../examples/consumer" -B "$work/consumer" -G Ninja --log-level=WARNING \
    -DCMAKE_PREFIX_PATH="$work/installed"
cmake --build "$work/consumer"
python3 "$here/run_example.py" "$work/consumer/consumer" "step 2 of 3"

"$work/installed/bin/norvane" --version
if ldd "$work/installed/bin/norvane" "$work/consumer/consumer" | grep -vF " $(realpath -- "$work")/installed/" |
    grep -E "not found|lib(generaltoolsgui|gui|guicore|core|document|utils|resource|batchcore|geometryengine)\.so"; then
    echo "consumer: the libraries above are not those that were installed" >&2
    exit 1
fi
