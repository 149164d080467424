#!/bin/bash
# Builds everything and runs the tests; installs what is missing first.
#   ./test.sh            all tests, through CTest
#   ./test.sh --full     also formatting, clang-tidy, clazy, all tests that run code again under the address and
#                        undefined-behaviour sanitizers with the long monkey run, the library inside another project,
#                        the benchmarks, the Debian packages, and the tour, offscreen and on a virtual display
#   ./test.sh --thread   the threaded tests under the thread sanitizer, against a toolkit core that is built for it
#                        once (about 20 minutes, kept in .cache)
# The two may be given together. A stage that fails does not stop the ones that do not need it; the table at the end
# tells all, and the status is non-zero if one failed.
set -uo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
cd "$root" || exit 1
# what a person has set for other programs must not reach the tests
unset QT_STYLE_OVERRIDE QT_SCALE_FACTOR QT_QPA_PLATFORMTHEME LD_LIBRARY_PATH

# a tour takes one to two minutes; one that hangs is ended
TOUR_SECONDS=600

full=no
thread=no
for argument in "$@"; do
    case $argument in
        --full) full=yes ;;
        --thread) thread=yes ;;
        *)
            sed -n '2,10s/^# \{0,1\}//p' test.sh >&2
            [ "$argument" = --help ]
            exit
            ;;
    esac
done

table=()
counts=()
failed=0

# note RESULT SECONDS NAME
note() { table+=("$(printf '%-8s %5d s   %s' "$1" "$2" "$3")"); }

# stage NAME COMMAND...: runs the command, writes down how it went and how long it took, and gives its status
stage() {
    local name=$1 start=$SECONDS status=0
    shift
    printf '\n==== %s\n' "$name"
    "$@" || status=$?
    if [ "$status" -eq 0 ]; then
        note passed $((SECONDS - start)) "$name"
    else
        note FAILED $((SECONDS - start)) "$name (status $status)"
        failed=1
    fi
    return "$status"
}

skip() {
    local name
    for name in "$@"; do
        note skipped 0 "$name"
    done
}

# build PRESET [TARGET]
build() {
    cmake --preset "$1" --log-level=WARNING && cmake --build "build/$1" ${2:+--target "$2"}
}

# run_tests PRESET [CTEST OPTION...]
run_tests() {
    local preset=$1 status=0 log=build/$1/ctest.log
    shift
    ctest --test-dir "build/$preset" -j2 --output-on-failure --no-tests=error "$@" 2>&1 | tee "$log" || status=$?
    counts+=("$preset: $(grep -E 'tests passed|No tests were found' "$log" | tail -n 1)")
    return "$status"
}

sanitized_tests() {
    NORVANE_MONKEY_EVENTS=20000 run_tests asan -LE "^sources$"
}

# tour NAME COMMAND...: plays the tour through the command and checks that it wrote its page
tour() {
    local folder=build/tour-$1
    shift
    rm -rf -- "$folder"
    mkdir -p -- "$folder" || return
    timeout "$TOUR_SECONDS" "$@" build/release/bin/norvane --tour "$folder" || return
    if ! [ -s "$folder/index.html" ] || [ -z "$(find "$folder" -name '*.png' -size +0)" ]; then
        echo "the tour left no index.html with pictures in $folder" >&2
        return 1
    fi
}

# display_tour COMMAND...: a second time if the first one fails, since a window manager loses a key now and then
display_tour() {
    tour display "$@" && return
    echo "once more, for the window manager's sake"
    tour display "$@"
}

full_stages() {
    # with it the tours print a page too
    local print_server=()
    [ ! -x /usr/sbin/cupsd ] || print_server=(tests/printing/with-print-server.sh)
    stage "format" tools/format.sh --check
    if [ "$1" = built ]; then
        stage "clang-tidy" tools/tidy.sh
        stage "clazy" tools/clazy.sh
    else
        skip "clang-tidy" "clazy"
    fi
    if stage "build with sanitizers" build asan; then
        stage "tests with sanitizers" sanitized_tests
    else
        skip "tests with sanitizers"
    fi
    stage "the library inside another project" tests/examples/embedded.sh build/embedded --build
    if stage "build for release" build release; then
        # without the ones that take long, whatever the machine
        stage "benchmarks" tools/benchmarks.sh --benchmark_min_time=0.05 \
            --benchmark_filter='-MovingOutline|rows?:10000|SelectAcrossAllRows|DragBegins|megapixels:(50|100)'
        stage "instructions of a scan" tools/batch-scan-instructions.py
        stage "Debian packages" tools/package.sh --check
        stage "tour, offscreen" tour offscreen "${print_server[@]}" env QT_QPA_PLATFORM=offscreen
        if command -v Xvfb >/dev/null; then
            stage "tour, virtual display" display_tour "${print_server[@]}" env QT_QPA_PLATFORM=xcb \
                tools/virtual-display.sh
        else
            skip "tour, virtual display (no Xvfb)"
        fi
    else
        skip "benchmarks" "instructions of a scan" "Debian packages" "tour, offscreen" "tour, virtual display"
    fi
}

thread_stages() {
    if stage "toolkit for the thread sanitizer" tools/build-tsan-qt.sh &&
        stage "build with the thread sanitizer" build tsan threaded; then
        stage "threaded tests" tools/run-tsan.sh
    else
        skip "threaded tests"
    fi
}

groups=(build run test print)
[ "$full" = no ] || groups+=(lint measure package)
[ "$thread" = no ] || groups+=(thread)
stage "packages" tools/install-packages.sh "${groups[@]}" || exit 1

state=built
if stage "build" build dev; then
    stage "tests" run_tests dev
else
    state=broken
    skip "tests"
fi
[ "$full" = no ] || full_stages "$state"
[ "$thread" = no ] || thread_stages

printf '\n==== summary\n'
printf '%s\n' "${table[@]}"
[ ${#counts[@]} -eq 0 ] || printf '%s\n' "${counts[@]}"
printf '%d s in all\n' "$SECONDS"
if [ "$failed" -ne 0 ]; then
    echo "FAILED"
    exit 1
fi
echo "passed"
