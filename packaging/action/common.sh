# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# Sourced by the steps of action.yml, which hand everything over in variables.
# shellcheck shell=bash disable=SC2034

work=${RUNNER_TEMP:?}/loadscope
report=$work/report
errors=$work/errors.txt
baseline=$work/baseline
command=${LOADSCOPE_COMMAND-check}
format=${LOADSCOPE_FORMAT-json}
program=${LOADSCOPE_PROGRAM:-loadscope}
folder=${LOADSCOPE_FOLDER:-.}
[[ $folder != -* ]] || folder=./$folder

# The report that a scan is compared with: the caller's, else what the cache held, else none.
kept_baseline() {
    if [[ -n ${LOADSCOPE_BASELINE-} ]]; then
        printf '%s' "$LOADSCOPE_BASELINE"
    elif [[ -f $baseline/report ]]; then
        printf '%s' "$baseline/report"
    fi
}

# print FILE: into the log. What the file says is no command to the runner.
print() {
    local mark
    mark=loadscope-$(od -An -N16 -tx1 /dev/urandom | tr -d ' \n')
    printf '::stop-commands::%s\n' "$mark"
    cat -- "$1"
    printf '\n::%s::\n' "$mark"
}

# fail SENTENCE: without texts from outside.
fail() {
    printf '::error::%s\n' "$1"
    exit 2
}
