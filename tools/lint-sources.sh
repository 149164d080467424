# shellcheck shell=bash
# Read by tidy.sh and clazy.sh: list_sources prints the sources to check, ended by NUL, and fills build/lint.
#   list_sources                   all product sources
#   list_sources --changed BASE    those that differ from the commit BASE, or all when a header does
#   list_sources FILE...           these
list_sources() {
    local files=()
    if [ "${1-}" = --changed ]; then
        mapfile -t files < <(git diff --name-only --diff-filter=d "${2:-HEAD}" -- '*.cpp' '*.h')
        [ ${#files[@]} -gt 0 ] || return 0
        if printf '%s\n' "${files[@]}" | grep -q '\.h$'; then
            files=()
        fi
    elif [ $# -gt 0 ]; then
        files=("$@")
    fi
    local sources
    sources=$(python3 tools/lint_database.py build/dev build/lint "${files[@]}") || return
    [ -z "$sources" ] || printf '%s\n' "$sources" | tr '\n' '\0'
}
