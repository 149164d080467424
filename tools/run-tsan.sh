#!/bin/bash
# Runs the tests with the label "threaded" of build/tsan against the toolkit core that tools/build-tsan-qt.sh made. One
# of them is a planted race that has to be reported, one is a clean hand-over that must not be.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

LD_LIBRARY_PATH=$PWD/.cache/qt-tsan/lib
export LD_LIBRARY_PATH
if ! ldd build/tsan/bin/planted_race | grep -q "libQt5Core.so.5 => $LD_LIBRARY_PATH/"; then
    echo "run-tsan: the tests do not load the toolkit core of .cache/qt-tsan" >&2
    exit 1
fi

# the sanitizer needs its shadow memory where address randomisation of newer kernels may put something else
run=()
if setarch "$(uname -m)" -R true 2>/dev/null; then
    run=(setarch "$(uname -m)" -R)
fi
TSAN_OPTIONS=exitcode=66:history_size=7:suppressions=$PWD/tests/support/tsan.supp \
    QT_PLUGIN_PATH=$(qmake -qt=5 -query QT_INSTALL_PLUGINS) \
    "${run[@]}" ctest --test-dir build/tsan -L '^threaded$' --output-on-failure --no-tests=error
