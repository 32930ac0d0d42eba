#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# action.sh COMMAND: reads action.yml and runs its steps' scripts, as far as that goes without the service, with the
# stand-ins in a temporary home.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit
loadscope=$1
source=$PWD
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
failed=0

fail() {
    printf 'FAILED: %s\n' "$1"
    failed=1
}

# holds FILE TEXT: the file has the text.
holds() { grep -qF -- "$2" "$1" || { fail "$(basename "$1") lacks: $2" && cat "$1"; }; }

# No script of a step holds an expression, and each is there; a reader of YAML agrees where one is installed.
scripts=$(sed -n 's/^ *run: //p' action.yml)
# shellcheck disable=SC2016
[[ $scripts != *'${{'* ]] || fail 'action.yml: an expression stands in a script'
while read -r script; do
    [[ -x $script ]] || fail "action.yml: $script is not there"
done < <(grep -oE 'packaging/action/[a-z]+\.sh' <<<"$scripts")
for python in python3 /usr/bin/python3 ''; do
    "$python" -c 'import yaml' 2>/dev/null && break
done
if [[ -n $python ]]; then
    "$python" - <<'PYTHON' || fail 'action.yml is not what a composite action is'
import re
import yaml

action = yaml.safe_load(open("action.yml"))
assert action["runs"]["using"] == "composite"
for name, given in action["inputs"].items():
    assert given["description"] and isinstance(given["default"], str), name
steps = action["runs"]["steps"]
known = {step["id"] for step in steps if "id" in step}
for step in steps:
    assert ("run" in step) != ("uses" in step)
    assert "uses" in step or step["shell"] == "bash"
    assert re.fullmatch(r"actions/[a-z/-]+@v\d+", step.get("uses", "actions/x@v1"))
    for used in re.findall(r"inputs\.([a-z-]+)", str(step)):
        assert used in action["inputs"], used
    for used in re.findall(r"steps\.([a-z-]+)\.", str(step)):
        assert used in known, used
PYTHON
else
    echo 'skipped: no reader of YAML is installed'
fi
if command -v shellcheck >/dev/null; then
    shellcheck -x packaging/action/*.sh tests/Packaging/action.sh || fail 'shellcheck'
fi

export HOME=$root/home RUNNER_TEMP=$root/temp GITHUB_OUTPUT=$root/output GITHUB_STEP_SUMMARY=$root/summary
export LOADSCOPE_PROGRAM=$loadscope LOADSCOPE_DEMO_DELAY=0 PATH=/usr/local/bin:/usr/bin:/bin
unset XDG_DATA_HOME CLAUDE_CONFIG_DIR
mkdir -p "$HOME/.local/bin" "$RUNNER_TEMP"
cp demo/bin/claude demo/bin/codex "$HOME/.local/bin"

# steps CODE [NAME=value]...: runs the scripts with these inputs in the order of the file; they end with CODE.
steps() {
    local expected=$1 code=0 step outcome
    shift
    rm -f "$root"/output "$root"/summary
    : >"$root/output"
    for step in prepare measure summary keep finish; do
        outcome=$(sed -n 's/^exit-code=//p' "$root/output")
        env "$@" LOADSCOPE_EXIT_CODE="$outcome" bash "$source/packaging/action/$step.sh" >>"$root/log" 2>&1 || code=$?
        [[ $code == 0 ]] || break
    done
    [[ $code == "$expected" ]] || { fail "$*: ended with $code, not $expected" && cat "$root/log"; }
}

# A folder whose name a shell, a log and a page could take for something else.
folder="$root/-a \$(touch ran)\`b\`"
mkdir -p "$folder/.git"
cd "$root" || exit
name=${folder#"$root/"}
head -c 4000 /dev/zero | tr '\0' x >"$folder/CLAUDE.md"
printf '{"files": {"CLAUDE.md": {"bytes": 1000}, "**": 100}}' >"$folder/.loadscope.json"
printf '{"files": {"CLAUDE.md": 5000}}' >"$root/wide.json"

steps 3 LOADSCOPE_FOLDER="$name" LOADSCOPE_COMMAND=check LOADSCOPE_FORMAT=json
holds "$root/summary" 'CLAUDE.md'
holds "$root/temp/loadscope/report" '"exceeded": true'
holds "$root/log" '::error::A budget is exceeded'
grep -q '^### ' "$root/summary" || fail 'the summary has no heading'
steps 0 LOADSCOPE_FOLDER="$name" LOADSCOPE_BUDGET="$root/wide.json" LOADSCOPE_FORMAT=junit
holds "$root/temp/loadscope/report" '<testsuite'
[[ ! -e $root/ran ]] || fail 'an input was run'

steps 2 LOADSCOPE_FOLDER="$root/none"
steps 2 LOADSCOPE_FOLDER="$name" LOADSCOPE_COMMAND='check; scan'
steps 2 LOADSCOPE_FOLDER="$name" LOADSCOPE_FORMAT=$'json\nkept=true'
steps 2 LOADSCOPE_FOLDER="$name" LOADSCOPE_PROGRAM=/none
printf '{"maxTokens": "::error::x"}' >"$root/broken.json"
steps 2 LOADSCOPE_FOLDER="$name" LOADSCOPE_BUDGET="$root/broken.json"

# A scan, then one of the same folder beside what the first one left.
if ! "$loadscope" scan --help | grep -q -- --baseline; then
    fail 'scan takes no --baseline'
fi
rm "$folder/.loadscope.json"
steps 0 LOADSCOPE_FOLDER="$name" LOADSCOPE_COMMAND=scan LOADSCOPE_BRANCH='a,b'
holds "$root/output" kept=true
holds "$root/summary" '    Total: '
grep -qxE 'cache-key=loadscope-[0-9a-f]{32}' "$root/output" || fail 'no key for the cache'
cp "$root/temp/loadscope/report" "$root/base.json"
printf '{"maxTokens": 100}' >"$root/narrow.json"
steps 3 LOADSCOPE_FOLDER="$name" LOADSCOPE_COMMAND=scan LOADSCOPE_BASELINE="$root/base.json" \
    LOADSCOPE_BUDGET="$root/narrow.json"
holds "$root/summary" '    Total: '
[[ $(grep -c '^### ' "$root/summary") == 2 ]] || fail 'the summary does not compare with the baseline'
steps 0 LOADSCOPE_FOLDER="$name" LOADSCOPE_COMMAND=scan LOADSCOPE_BASELINE="$root/base.json" LOADSCOPE_FORMAT=markdown
[[ ! -e $HOME/.local/share/Loadscope ]] || fail 'a scan of a job was recorded'
steps 1 LOADSCOPE_FOLDER="$name" LOADSCOPE_COMMAND=scan LOADSCOPE_DEMO_CLAUDE=crash
holds "$root/output" kept=false

[[ $failed != 0 ]] || echo "ok: the action's steps do what they say"
exit $failed
