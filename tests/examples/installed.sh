#!/bin/bash
# Lets examples/consumer find the package that is installed in a folder, starts that program and the installed editor, and
# sees to it that both run with the libraries from there.
#   tests/examples/installed.sh PREFIX WORK_FOLDER
set -euo pipefail
export QT_QPA_PLATFORM=offscreen
here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
project=$(realpath -- "$here/../..")
prefix=$(realpath -- "$1")
work=$2

cmake -S "$project/examples/consumer" -B "$work" -G Ninja --log-level=WARNING -DCMAKE_PREFIX_PATH="$prefix"
cmake --build "$work"
python3 "$here/run_example.py" "$work/consumer" "step 2 of 3"

"$prefix/bin/norvane" --version
if ldd "$prefix/bin/norvane" "$work/consumer" | grep -vF " $prefix/" | grep -F -e "not found" -e " $project/"; then
    echo "installed: the libraries above are not those that were installed" >&2
    exit 1
fi
