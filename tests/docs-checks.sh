#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# What the documents say of the repository and the command: docs-checks.sh COMMAND
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit
loadscope=$1
failed=0

fail() {
    printf 'FAILED: %s\n' "$1"
    failed=1
}

# Every link and picture that is no web address leads to a file, and one into a page to a heading there.
headings() { sed -n 's/^#\{1,\} //p' "$1" | tr '[:upper:]' '[:lower:]' | sed 's/[^a-z0-9 -]//g; s/ /-/g'; }
while IFS=: read -r page link; do
    target=${link%%#*}
    file=$(dirname "$page")/$target
    [[ -n $target ]] || file=$page
    [[ -e $file ]] || fail "$page: $link does not exist"
    [[ $link != *'#'* ]] || headings "$file" | grep -qxF -- "${link#*#}" || fail "$page: $link names no heading"
done < <(find . -name '*.md' -not -path './build/*' -not -path './demo/repositories/*' -print0 |
    xargs -0 grep -oHE '\]\([^) ]+\)' | sed 's/:\](/:/; s/)$//' | grep -vE ':(https?|mailto):')

# Every option of the command that the README names is in its help.
help=$(for command in '' scan status history 'history clear' 'history export' leaderboard open; do
    # shellcheck disable=SC2086
    "$loadscope" $command --help
done) || fail 'the command prints no help'
while read -r option; do
    grep -qE -- "(^|[ ,])$option( |,|\$)" <<<"$help" || fail "README.md: the command has no $option"
done < <(grep -E 'loadscope (scan|status|history|leaderboard|open)|eave out|add `--' README.md | grep -oE -- '--[a-z][a-z-]+' | sort -u)

# Every headline of the troubleshooting table is one that the program can print, and none of the core's is missing.
table=$(sed -n '/^## When something goes wrong/,/^## Limits/p' README.md | sed -nE 's/^\| ([A-Z][^|]*) \|.*/\1/p' | tail -n +2)
sources=$(cat LoadscopeCore/*/*.cpp LoadscopeCLI/*.cpp)
while read -r headline; do
    [[ $sources == *"\"$headline\""* ]] || fail "README.md: nothing prints \"$headline\""
done <<<"$table"
while read -r headline; do
    grep -qxF -- "$headline" <<<"$table" || fail "README.md: the table lacks \"$headline\""
done < <(sed -nE 's/^ *\{"[a-zA-Z]+", "(.*)"\},$/\1/p' LoadscopeCore/ToolRun/ProbeError.cpp | sort -u)
[[ $(wc -l <<<"$table") -ge 9 ]] || fail 'README.md: the troubleshooting table was not found'

[[ $failed != 0 ]] || echo 'ok: the documents agree with the repository and the command'
exit $failed
