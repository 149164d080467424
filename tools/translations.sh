#!/bin/bash
# Brings the translations in line with the texts of the sources: what is new comes in without a translation, what is
# gone goes.
#   tools/translations.sh            rewrites translations/*.ts
#   tools/translations.sh --check    changes nothing, names the files that would change, and fails then
# A further language begins as two empty files, translations/generaltoolsgui_<language>.ts and norvane_<language>.ts.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

case ${1-} in
    "" | --check) ;;
    *) echo "usage: tools/translations.sh [--check]" >&2; exit 2 ;;
esac

target=translations
if [ "${1-}" = --check ]; then
    target=$(mktemp -d)
    trap 'rm -rf -- "$target"' EXIT
    cp translations/*.ts "$target"
fi

# update CATALOG FOLDER...: the messages of the folders go to the files of all languages of the catalog
update() {
    local catalog=$1 file language
    shift
    for file in "$target/$catalog"_*.ts; do
        language=${file##*_}
        # lupdate makes what is not there, and reads nothing that is empty
        [ -s "$file" ] || rm -f -- "$file"
        # lupdate stumbles over a friend that is a template, and takes the right context all the same
        lupdate -silent -no-obsolete -locations none -extensions cpp,h,ui "$@" \
            -source-language en -target-language "${language%.ts}" -ts "$file" \
            2> >(grep -v "Qualifying with unknown namespace" >&2)
    done
}

update generaltoolsgui include src forms siblings
update norvane editor

[ "${1-}" = --check ] || exit 0
status=0
for file in translations/*.ts; do
    if ! cmp -s "$file" "$target/${file##*/}"; then
        echo "$file is not in line with the sources: run tools/translations.sh and translate what is new" >&2
        diff -u "$file" "$target/${file##*/}" >&2 || true
        status=1
    fi
done
exit "$status"
