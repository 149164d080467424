#!/bin/bash
# Installs a build into a folder, moves that, and uses what is there as another project would.
#   tests/examples/consumer.sh BUILD_FOLDER WORK_FOLDER
set -euo pipefail
here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
build=$1
work=$2

rm -rf -- "$work"
cmake --install "$build" --prefix "$work/first" >/dev/null
# whatever names a folder of the build or of the first place is found by this
mv -- "$work/first" "$work/installed"
"$here/installed.sh" "$work/installed" "$work/consumer"
