#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# Looks at the inputs before anything is started, and names the places and the cache's key for the steps.
set -euo pipefail
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

[[ $command == check || $command == scan ]] || fail 'The input "command" is neither check nor scan.'
case $format in
json | markdown | text | junit) ;;
*) fail 'The input "format" is none of json, markdown, text and junit.' ;;
esac
[[ -d $folder ]] || fail 'The input "folder" names no folder.'
command -v -- "$program" >/dev/null || fail 'The command loadscope is not installed on this runner.'

rm -rf -- "$work"
mkdir -p -- "$baseline"
# Branches and folders may hold what no key may.
key=$(printf '%s\0%s' "$folder" "${LOADSCOPE_BRANCH-}" | sha256sum)
{
    printf 'report=%s\n' "$report"
    printf 'baseline=%s\n' "$baseline"
    printf 'cache-key=loadscope-%s\n' "${key:0:32}"
} >>"${GITHUB_OUTPUT:?}"
