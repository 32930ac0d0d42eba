#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# House rules that a compiler does not hold, one line each: house-checks.sh [LIBRARY OF THE CORE]
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit
failed=0
sources=()
for folder in LoadscopeCore LoadscopeCLI LoadscopeApp tests tools benchmarks fuzz demo packaging; do
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
order=(Platform Process ToolRun Scoring Geometry ClaudeProbe CodexProbe Instructions Report History Comparison Budget Presentation Readiness Scan)
includes_of_later_folders() {
    local i later
    for ((i = 0; i + 1 < ${#order[@]}; i++)); do
        later=$(IFS='|' && echo "${order[*]:i+1}")
        grep -rnE "${code[@]}" "#include \"LoadscopeCore/($later)/" "LoadscopeCore/${order[i]}"
    done
    find LoadscopeCore -mindepth 1 -maxdepth 1 -type d |
        grep -vE "/($(IFS='|' && echo "${order[*]}"))\$"
}
# The rooms of the window, likewise.
rooms=(Theme Accessibility Text Icons Motion Controls Cards Charts Tables Pages Help Onboarding Window App)
includes_of_later_rooms() {
    local i later
    for ((i = 0; i + 1 < ${#rooms[@]}; i++)); do
        later=$(IFS='|' && echo "${rooms[*]:i+1}")
        grep -rnE "${code[@]}" "#include \"LoadscopeApp/($later)/" "LoadscopeApp/${rooms[i]}"
    done
    find LoadscopeApp -mindepth 1 -maxdepth 1 -type d | grep -vE "/($(IFS='|' && echo "${rooms[*]}"))\$"
}
code=(--include='*.h' --include='*.cpp')

unused_icons() {
    local file key
    for file in LoadscopeApp/Icons/*.svg; do
        key=$(basename "$file" .svg)
        grep -qF ">Icons/$key.svg<" LoadscopeApp/LoadscopeIcons.qrc || echo "$file is not in the resources"
        grep -rqF "${code[@]}" "\"$key\"" LoadscopeApp LoadscopeCore || echo "$file is not used"
    done
}

# Keys with a dot, wherever they stand, and those without where an icon is made.
unknown_icons() {
    grep -rhoE "${code[@]}" '"[a-z0-9]+(\.[a-z0-9]+)+"|(StateIcon|IconView|setSymbol|setIcon|AlertPanel)\(QStringLiteral\("[a-z]+"' \
        LoadscopeApp LoadscopeCore/Presentation | grep -oE '"[^"]+"' | tr -d '"' | sort -u | while read -r key; do
        [[ $key == org.* || -f LoadscopeApp/Icons/$key.svg ]] || echo "$key"
    done
}

# Literals with a space or a percent sign that are joined with something: words around what was measured. The
# core makes such sentences, so that they are tested without a window. Shown values are joined by layouts.
composed_sentences() {
    local words='"(?=[^"\n]*(?: |%(?![1-9])))(?:[^"\\\n]|\\.)*"'
    local more='(?:\s*"(?:[^"\\\n]|\\.)*")*+'
    local made='(?:\b(?:QStringLiteral|QLatin1String|QString|DisplayText::own|std::string)\(\s*)?'
    # The usage of the program is printed, not shown.
    grep -rlPz "${code[@]}" --exclude=WindowArguments.cpp \
        "$words$more\s*\)?\s*(?:\.arg\(|\+(?!\+))|\+=?\s*$made$words" LoadscopeApp
}

none 'the core includes no Qt' grep -rnE "${code[@]}" '#include [<"](Q[A-Z]|Qt)' LoadscopeCore LoadscopeCLI
none 'each folder of the core includes only those before it' includes_of_later_folders
none 'the core includes neither the command nor the window' grep -rnE "${code[@]}" 'Loadscope(CLI|App)/' LoadscopeCore
none 'each room of the window includes only those before it' includes_of_later_rooms
none 'the command and the window do not include each other' grep -rnE --include='*.cpp' --include='*.h' \
    'LoadscopeApp/' LoadscopeCLI
none 'no number is formatted or read by the C locale functions' grep -rnE "${code[@]}" \
    '\b(strtod|strtol|atoi|atof|stod|stoi|stol|stoll|setlocale)\(' LoadscopeCore LoadscopeCLI
none 'stops go through StopToken: not every platform has the library'\''s' grep -rnE "${code[@]}" 'std::(jthread|stop_(token|source|callback))|<stop_token>' "${sources[@]}"
none 'no shell is started' grep -rnE "${code[@]}" '\b(system|popen)\(' LoadscopeCore LoadscopeCLI
none 'public headers are light' grep -rlE --include='*.h' '#include <(regex|iostream)>' LoadscopeCore
none 'every header has #pragma once' grep -rL --include='*.h' '#pragma once' "${sources[@]}"
none 'every source file names its licence' grep -rL "${code[@]}" 'SPDX-License-Identifier: MIT' "${sources[@]}"
none 'no test waits for luck' grep -rnE "${code[@]}" '\b(usleep|sleep_for|QTest::qWait|QTest::qSleep)\(' tests --exclude-dir=Support --exclude-dir=Programs
none 'no line ends in white space' grep -rnE "${code[@]}" '[[:blank:]]+$' LoadscopeCore LoadscopeCLI
none 'no tab in the code' grep -rnP "${code[@]}" '\t' "${sources[@]}"
none 'no colour outside the theme' grep -rnE "${code[@]}" --exclude='ThemeColor.*' \
    'QColor\([^)Q:]*[0-9"]|Qt::(black|white|red|green|blue|yellow|cyan|magenta|gray|(dark|light)[A-Z][a-z]+)\b|"#[0-9A-Fa-f]{3,8}"|QColorConstants|setNamedColor' LoadscopeApp
none 'labels are made by TextLabel, which shows markup as it is' grep -rnE "${code[@]}" --exclude='TextLabel.*' \
    'new QLabel|QLabel [a-z]+[({;]|public QLabel|QMessageBox|QErrorMessage' LoadscopeApp
none 'TextLabel holds every text for plain' grep -L 'setTextFormat(Qt::PlainText)' LoadscopeApp/Text/TextLabel.cpp
none 'nothing but the own guide is shown as markup' grep -rnE "${code[@]}" --exclude='GuideView.*' --exclude='ReportPages.*' 'setHtml|setMarkdown|insertHtml|QTextBrowser|Qt::(RichText|AutoText|MarkdownText)' LoadscopeApp
none 'tool tips go through PlainToolTip' grep -rlPz "${code[@]}" --exclude='PlainToolTip.*' \
    'QToolTip::showText|setToolTip\((?!\s*PlainToolTip::escaped)' LoadscopeApp
none 'widgets compose no sentences: the core does' composed_sentences
none 'every icon has a key in the resources and in the code' unused_icons
none 'every icon key has a file' unknown_icons
if [[ -n ${1-} ]]; then
    none 'the library of the core holds no Qt symbol' bash -c \
        'nm "$1" 2>/dev/null | grep -E "_Z[A-Z]*[0-9]+Q[A-Z]|qVersion|qt_version_tag" | head -n 5' nm "$1"
fi
exit $failed
