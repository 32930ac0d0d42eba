#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# Scans or checks, keeps the report and hands on the exit code: an exceeded budget ends the job only when the summary
# and the artifact are there.
set -euo pipefail
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

arguments=("$command" "$folder" "--format=$format")
[[ -z ${LOADSCOPE_BUDGET-} ]] || arguments+=("--budget=$LOADSCOPE_BUDGET")
if [[ $command == scan ]]; then
    arguments+=(--no-history)
    kept=$(kept_baseline)
    [[ -z $kept ]] || arguments+=("--baseline=$kept")
fi

code=0
"$program" "${arguments[@]}" >"$report" 2>"$errors" || code=$?
[[ $format == json ]] || print "$report"
print "$errors"
printf 'exit-code=%d\n' "$code" >>"${GITHUB_OUTPUT:?}"
