#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# installed-files.sh BUILD_FOLDER APP_ID: installs into a temporary folder and holds what arrives there to the programs:
# no file too few or too many, and pages and completions that name every command and option of `--help`.
set -uo pipefail
build=$1
id=$2
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
failed=0

# same WHAT EXPECTED FOUND: both lists hold the same words.
same() {
    local difference
    difference=$(diff <(tr ' ' '\n' <<<"$2" | sort -u) <(tr ' ' '\n' <<<"$3" | sort -u) | grep '^[<>]')
    [[ -z $difference ]] && return
    printf 'FAILED: %s (< expected, > found)\n%s\n' "$1" "$difference"
    failed=1
}

# valid TOOL ARGUMENT...: the checker accepts the file, where it is installed.
valid() {
    local output
    command -v "$1" >/dev/null || { echo "skipped: $1 is not installed" && return; }
    output=$("$@" 2>&1) || { printf 'FAILED: %s\n%s\n' "$*" "$output" && failed=1; }
}

DESTDIR=$root cmake --install "$build" --prefix /usr >/dev/null || exit 1
cd "$root/usr" || exit

expected="bin/loadscope share/doc/loadscope/LICENSE share/doc/loadscope/CHANGELOG.md share/man/man1/loadscope.1
    share/bash-completion/completions/loadscope share/zsh/site-functions/_loadscope
    share/fish/vendor_completions.d/loadscope.fish"
if [[ -e bin/loadscope-app ]]; then
    expected+=" bin/loadscope-app share/man/man1/loadscope-app.1 share/applications/$id.desktop
        share/metainfo/$id.metainfo.xml share/icons/hicolor/scalable/apps/$id.svg
        share/icons/hicolor/symbolic/apps/$id-symbolic.svg"
    for side in 16 22 24 32 48 64 128 256 512; do
        expected+=" share/icons/hicolor/${side}x$side/apps/$id.png"
    done
    valid desktop-file-validate "share/applications/$id.desktop"
    valid appstreamcli validate --no-net "share/metainfo/$id.metainfo.xml"
fi
same 'installed files' "$(xargs -n1 <<<"$expected")" "$(find . -type f | cut -c3-)"
same 'version of both programs and of the page' "$(bin/loadscope --version | sed -n '1s/.* //p')" \
    "$(sed -n '/^\.TH/s/.*Loadscope \([0-9.]*\).*/\1/p' share/man/man1/*.1)$(
        [[ ! -e bin/loadscope-app ]] || bin/loadscope-app --version | sed -n '1s/.* /\n/p')"

# words_of_help SECTION COMMAND...: the names in the first column of a section of the command's help.
words_of_help() {
    bin/loadscope "${@:2}" --help </dev/null | sed -n "/^$1:/,/^\$/{/^  /s/^ *\([^ ]*\).*/\1/p}" | tr ',' '\n'
}
words_of_bash() {
    COMP_WORDS=("$@")
    COMP_CWORD=$(($# - 1))
    _loadscope
    printf '%s\n' "${COMPREPLY[@]}"
}
words_of_page() {
    sed -n "/^\.S[SH] $1\$/,/^\.S[SH] /p" share/man/man1/loadscope.1 | sed 's/\\-/-/g' | grep -A1 '^\.TP' |
        grep -oE -- '-(-[a-z][a-z-]+|h)\b'
}
words_of_fish() {
    HOME=$root XDG_CONFIG_HOME=$root fish --no-config --command "source share/fish/vendor_completions.d/loadscope.fish
        complete --do-complete '$1'" 2>/dev/null | cut -f1
}
# Of the shell when it completes; nothing here.
# shellcheck disable=SC2317
compopt() { :; }
# shellcheck disable=SC1091
source share/bash-completion/completions/loadscope

all_options=
for command in '' scan status history 'history clear' 'history import' 'history export' leaderboard diff check open; do
    # shellcheck disable=SC2086 # one word each
    options=$(words_of_help Options $command)
    all_options+=" $options"
    # shellcheck disable=SC2086
    same "bash: options of '$command'" "$(grep '^--' <<<"$options")" "$(words_of_bash loadscope $command --)"
    # What fish offers where one types, of the real shell where it is installed.
    if command -v fish >/dev/null; then
        same "fish: options of '$command'" "$(grep '^--' <<<"$options" | grep -v -- '--help')" \
            "$(words_of_fish "loadscope ${command:+$command }--" | grep -v -- '--help')"
    fi
    if [[ -z $command ]]; then
        same 'page: options' "$options" "$(words_of_page OPTIONS)"
    else
        same "page: options of '$command'" "$(grep -vE -- '^(-h|--help)$' <<<"$options")" "$(words_of_page "$command")"
    fi
done
commands=$(words_of_help Subcommands)
if command -v fish >/dev/null; then
    same 'fish: commands' "$commands" "$(words_of_fish 'loadscope ')"
    same 'fish: commands of history' "$(words_of_help Subcommands history)" "$(words_of_fish 'loadscope history ')"
fi
same 'bash: commands' "$commands" "$(words_of_bash loadscope '')"
same 'bash: commands of history' "$(words_of_help Subcommands history)" "$(words_of_bash loadscope history '')"
same 'page: commands' "$commands history clear import export" "$(sed -n 's/^\.SS //p' share/man/man1/loadscope.1)"
same 'zsh: commands' "$commands" \
    "$(sed -n '/commands=(/,/^ *)/s/^ *.\([a-z]*\):.*/\1/p' share/zsh/site-functions/_loadscope)"
same 'zsh: options' "$(tr ' ' '\n' <<<"$all_options" | grep '^-')" \
    "$(grep -oE -- "['{,)]-(-[a-z-]+|h)" share/zsh/site-functions/_loadscope | cut -c2-)"
exit $failed
