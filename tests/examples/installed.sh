#!/bin/bash
# Lets examples/consumer find the package that is installed in a folder, installs that program too, starts it and the
# installed editor, and sees to it that both run with the libraries from there.
#   tests/examples/installed.sh PREFIX WORK_FOLDER
set -euo pipefail
export QT_QPA_PLATFORM=offscreen
here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
prefix=$(realpath -- "$1")
work=$2

cmake -S "$here/../../examples/consumer" -B "$work" -G Ninja --log-level=WARNING -DCMAKE_PREFIX_PATH="$prefix"
cmake --build "$work"
cmake --install "$work" --prefix "$work/installed" >/dev/null
consumer=$work/installed/bin/consumer
python3 "$here/run_example.py" "$consumer" "step 2 of 3"
"$prefix/bin/norvane" --version

libraries=$(ldd "$prefix/bin/norvane" "$consumer")
find "$prefix" -name '*.so*' -printf '%f\n' >"$work/names"
if grep -vF " $prefix/" <<<"$libraries" | grep -F -e "not found" -f "$work/names"; then
    echo "installed: the libraries above are not those that were installed" >&2
    exit 1
fi
