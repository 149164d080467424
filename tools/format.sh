#!/bin/bash
# Formats the C++ files of the repository.
#   tools/format.sh            rewrites them in place
#   tools/format.sh --check    changes nothing, names what is not as .clang-format wants it, and fails then
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

case ${1-} in
    "") options=(-i) ;;
    --check) options=(--dry-run -Werror) ;;
    *) echo "usage: tools/format.sh [--check]" >&2; exit 2 ;;
esac

# what git knows and what is new and not ignored; the plain tree where this is no clone
list_files() {
    if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        git ls-files -z --cached --others --exclude-standard -- '*.h' '*.cpp'
    else
        find . \( -path ./build -o -path ./.cache \) -prune -o \( -name '*.h' -o -name '*.cpp' \) -print0
    fi
}

list_files | while IFS= read -r -d '' file; do
    # a file that is deleted and not yet committed is still listed
    [ ! -f "$file" ] || printf '%s\0' "$file"
done | xargs -0 -r clang-format "${options[@]}" --style=file
