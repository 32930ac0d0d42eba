#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# House rules that a compiler does not hold, one line each: house-checks.sh [LIBRARY OF THE CORE]
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit
failed=0
sources=()
for folder in LoadscopeCore LoadscopeCLI LoadscopeApp tests benchmarks fuzz demo; do
    [[ ! -d $folder ]] || sources+=("$folder")
done

# none RULE COMMAND...: the command must find nothing.
none() {
    local found
    found=$("${@:2}")
    if [[ -n $found ]]; then
        printf 'FAILED: %s\n%s\n' "$1" "$found"
        failed=1
    else
        printf 'ok: %s\n' "$1"
    fi
}

# The folders of the core in an order in which each includes only earlier ones: so no circle can arise.
order=(Platform Process Scoring Geometry ClaudeProbe CodexProbe Instructions Report History Presentation Readiness Scan)
includes_of_later_folders() {
    local i later
    for ((i = 0; i + 1 < ${#order[@]}; i++)); do
        later=$(IFS='|' && echo "${order[*]:i+1}")
        grep -rnE "${code[@]}" "#include \"LoadscopeCore/($later)/" "LoadscopeCore/${order[i]}"
    done
    find LoadscopeCore -mindepth 1 -maxdepth 1 -type d |
        grep -vE "/($(IFS='|' && echo "${order[*]}"))\$"
}
parts_of_the_window_above() {
    grep -rnE "${code[@]}" '#include "LoadscopeApp/(Charts|Pages)/' LoadscopeApp/Components
    grep -rnE "${code[@]}" '#include "LoadscopeApp/Pages/' LoadscopeApp/Charts
}
code=(--include='*.h' --include='*.cpp')

none 'the core includes no Qt' grep -rnE "${code[@]}" '#include [<"](Q[A-Z]|Qt)' LoadscopeCore LoadscopeCLI
none 'each folder of the core includes only those before it' includes_of_later_folders
none 'the core includes neither the command nor the window' grep -rnE "${code[@]}" 'Loadscope(CLI|App)/' LoadscopeCore
none 'components know no chart, charts know no page' parts_of_the_window_above
none 'the command and the window do not include each other' grep -rnE --include='*.cpp' --include='*.h' \
    'LoadscopeApp/' LoadscopeCLI
none 'no number is formatted or read by the C locale functions' grep -rnE "${code[@]}" \
    '\b(strtod|strtol|atoi|atof|stod|stoi|stol|stoll|setlocale)\(' LoadscopeCore LoadscopeCLI
none 'no shell is started' grep -rnE "${code[@]}" '\b(system|popen)\(' LoadscopeCore LoadscopeCLI
none 'public headers are light' grep -rlE --include='*.h' '#include <(regex|iostream)>' LoadscopeCore
none 'every header has #pragma once' grep -rL --include='*.h' '#pragma once' "${sources[@]}"
none 'every source file names its licence' grep -rL "${code[@]}" 'SPDX-License-Identifier: MIT' "${sources[@]}"
none 'no test waits for luck' grep -rnE "${code[@]}" '\b(usleep|sleep_for|QTest::qWait|QTest::qSleep)\(' tests --exclude-dir=Support --exclude-dir=Programs
none 'no line ends in white space' grep -rnE "${code[@]}" '[[:blank:]]+$' LoadscopeCore LoadscopeCLI
none 'no tab in the code' grep -rnP "${code[@]}" '\t' "${sources[@]}"
if [[ -n ${1-} ]]; then
    none 'the library of the core holds no Qt symbol' bash -c \
        'nm "$1" 2>/dev/null | grep -E "_Z[A-Z]*[0-9]+Q[A-Z]|qVersion|qt_version_tag" | head -n 5' nm "$1"
fi
exit $failed
