#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# Puts the report where the cache takes the next baseline from; that of a scan that failed is none.
set -euo pipefail
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

kept=false
if [[ ${LOADSCOPE_EXIT_CODE-} == 0 || ${LOADSCOPE_EXIT_CODE-} == 3 ]]; then
    mkdir -p -- "$baseline"
    cp -- "$report" "$baseline/report"
    kept=true
fi
printf 'kept=%s\n' "$kept" >>"${GITHUB_OUTPUT:?}"
