#!/bin/bash
# Runs clazy, which knows the toolkit, over the product sources. Needs a built build/dev.
#   tools/clazy.sh [--changed [BASE] | FILE...]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. tools/lint-sources.sh

checks=(
    # the whole of level0 has next to no false reports: wrong connections, temporary copies, calls that detach
    level0
    # a string builder in an auto variable refers to parts that are gone
    auto-unexpected-qstringbuilder
    # the child of a child event is still, or already, a plain QObject
    child-event-qobject-cast
    # a lambda without a context object is called after what it captured is gone
    connect-3arg-lambda
    # a signal in the const world and a slot that was meant as a getter surprise whoever connects them
    const-signal-or-slot
    # a change to a temporary copy of a container is lost
    detaching-temporary
    # Q_EMIT before what is no signal, and a signal without it, mislead the reader
    incorrect-emit
    # an event filter must be a filter of its own thread's objects, and a posted event lives on the heap
    install-event-filter
    post-event
    # a signal of a base that is hidden by one of the same name is connected by mistake
    overridden-signal
    # a range loop over a shared container copies all of it, or copies each element
    range-loop-detach
    range-loop-reference
    # a reference into a container that dies with the return
    returning-data-from-temporary
    # a call that jumps over the direct base leaves out what that one does
    skipped-base-method
    # a signal that is virtual is emitted by its override
    virtual-signal
    # an argument that is shared data is copied for nothing
    function-args-by-ref
    # a virtual call in a constructor reaches the operation of the base
    virtual-call-ctor
    # an assertion that does something does it in one build only
    assert-with-side-effects
    # a text that is built at run time is never found by the translator's tools
    tr-non-literal
)

sources=$(mktemp)
found=$(mktemp)
trap 'rm -f -- "$sources" "$found"' EXIT
list_sources "$@" >"$sources"

list=$(IFS=,; echo "${checks[*]}")
status=0
xargs -0 -r -n 1 -P "$(nproc)" clazy-standalone -p build/lint --checks="$list" \
    --extra-arg=-Wno-everything --header-filter='/[A-Z][A-Za-z0-9_]*\.h$' --ignore-dirs='^/usr/|/build/' \
    <"$sources" >"$found" 2>&1 || status=$?
if [ "$status" -ne 0 ] || grep -q -e '-Wclazy-' "$found"; then
    # a header is reported once for each source that includes it
    awk '/(warning|error): /{shown = !seen[$0]++} shown' "$found" >&2
    echo "clazy: the findings above are to be mended" >&2
    exit 1
fi
echo "clazy: $(tr -cd '\0' <"$sources" | wc -c) sources are clean"
