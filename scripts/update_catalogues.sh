#!/usr/bin/env bash
# Brings every catalogue up to the template: new entries come in empty, what is gone goes, comments are the template's.
# scripts/check_catalogues.py then tells which translations are missing.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../assets/locale"
for catalogue in *.po; do
    msgmerge --quiet --no-fuzzy-matching --no-wrap --output-file="$catalogue.new" "$catalogue" kelpa.pot
    msgattrib --no-obsolete --no-wrap --output-file="$catalogue" "$catalogue.new"
    rm "$catalogue.new"
done
