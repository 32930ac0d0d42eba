#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# Writes the job summary. The command makes the Markdown; what else is shown stands in it as code, line by line.
set -euo pipefail
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# as_code: four blanks before each line, which no line can end.
as_code() {
    printf '\n'
    sed 's/\r//g; s/^/    /'
    printf '\n'
}

# The sentences of a JSON report, as its writer lays them out: one to a line.
sentences() {
    sed -n '/^  "summary": \[$/,/^  \]/s/^    "\(.*\)",\{0,1\}$/\1/p' "$report" | sed 's/\\"/"/g'
}

budget=()
[[ -z ${LOADSCOPE_BUDGET-} ]] || budget=("--budget=$LOADSCOPE_BUDGET")

summary() {
    if [[ $command == check ]]; then
        # A check starts nothing: once more in the other form.
        "$program" check "$folder" --format=markdown ${budget[@]+"${budget[@]}"} 2>/dev/null || true
    elif [[ $format == markdown ]]; then
        cat -- "$report"
    elif [[ $format == json ]]; then
        printf '### Startup context\n'
        sentences | as_code
        local kept
        kept=$(kept_baseline)
        [[ $kept != -* ]] || kept=./$kept
        [[ -z $kept ]] || "$program" diff --format=markdown "$kept" "$report" 2>/dev/null || true
    else
        printf '### Startup context\n'
        as_code <"$report"
    fi
    [[ ! -s $errors ]] || as_code <"$errors"
}

summary >"$work/summary.md"
# The service takes a megabyte.
head -c 1000000 -- "$work/summary.md" >>"${GITHUB_STEP_SUMMARY:?}"
