# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# fish completion for loadscope(1)

set -l commands scan status history leaderboard diff check open
set -l of_history clear import export

complete -c loadscope -f
complete -c loadscope -s h -l help -d 'print help'

complete -c loadscope -n "not __fish_seen_subcommand_from $commands" -l version -d 'print the version and those of the libraries'
complete -c loadscope -n "not __fish_seen_subcommand_from $commands" -a scan -d 'measure what loads before you type, in one folder or several'
complete -c loadscope -n "not __fish_seen_subcommand_from $commands" -a status -d 'show whether the tools are installed and signed in'
complete -c loadscope -n "not __fish_seen_subcommand_from $commands" -a history -d 'show the recorded scans, newest first'
complete -c loadscope -n "not __fish_seen_subcommand_from $commands" -a leaderboard -d 'rank the recorded repositories by their newest total'
complete -c loadscope -n "not __fish_seen_subcommand_from $commands" -a diff -d 'show what changed between two scans'
complete -c loadscope -n "not __fish_seen_subcommand_from $commands" -a check -d 'check instruction files and budgets without starting any tool'
complete -c loadscope -n "not __fish_seen_subcommand_from $commands" -a open -d 'open the window with a folder chosen'

complete -c loadscope -n '__fish_seen_subcommand_from scan' -a '(__fish_complete_directories)'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l all -d 'measure every folder of the history that is still there'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l jobs -x -d 'measure this many folders at a time'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l include-codex -d 'measure Codex too: runs one real session'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l codex-estimate -d 'only estimate Codex, without a session'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l details -d 'print what each category is made of'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l top -x -d 'the same, the largest members of each group only'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l format -x -a 'text markdown json junit' -d 'the form of the result'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l json -d 'print one JSON object'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l no-history -d 'do not record the scan'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l max-tokens -x -d 'exit with 3 when the total is above this'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l budget -r -F -d 'hold against this budget'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l no-budget -d 'hold against no budget'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l baseline -r -F -d 'compare with a kept report'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l skip-check -d 'do not check the tools first'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l model -x -a 'sonnet opus haiku' -d 'the model to ask for'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l wait-for-servers -d 'let Claude Code wait for servers that start slowly'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l keep-environment -d 'pass on the variables that sign Claude Code in'
complete -c loadscope -n '__fish_seen_subcommand_from scan' -l accept-estimate -d 'take a total that Claude Code estimated'

complete -c loadscope -n '__fish_seen_subcommand_from status' -l json -d 'print one JSON object'

complete -c loadscope -n "__fish_seen_subcommand_from history; and not __fish_seen_subcommand_from $of_history" -l repository -x -a '(__fish_complete_directories)' -d 'only scans of this folder'
complete -c loadscope -n "__fish_seen_subcommand_from history; and not __fish_seen_subcommand_from $of_history" -l tool -x -a 'claude codex' -d 'only scans of this tool'
complete -c loadscope -n "__fish_seen_subcommand_from history; and not __fish_seen_subcommand_from $of_history" -l json -d 'print one JSON object, oldest scan first'
complete -c loadscope -n "__fish_seen_subcommand_from history; and not __fish_seen_subcommand_from $of_history" -a clear -d 'delete the history'
complete -c loadscope -n "__fish_seen_subcommand_from history; and not __fish_seen_subcommand_from $of_history" -a import -d 'add reports and histories'
complete -c loadscope -n "__fish_seen_subcommand_from history; and not __fish_seen_subcommand_from $of_history" -a export -d 'write the history as a file'
complete -c loadscope -n '__fish_seen_subcommand_from history; and __fish_seen_subcommand_from clear' -l yes -d 'do not ask'
complete -c loadscope -n '__fish_seen_subcommand_from history; and __fish_seen_subcommand_from import' -F
complete -c loadscope -n '__fish_seen_subcommand_from history; and __fish_seen_subcommand_from export' -l output -r -F -d 'write to this file'

complete -c loadscope -n '__fish_seen_subcommand_from leaderboard' -l tool -x -a 'claude codex' -d 'rank by this tool'
complete -c loadscope -n '__fish_seen_subcommand_from leaderboard' -l json -d 'print one JSON object'

complete -c loadscope -n '__fish_seen_subcommand_from diff' -F
complete -c loadscope -n '__fish_seen_subcommand_from diff' -l repository -x -a '(__fish_complete_directories)' -d 'compare scans of this folder'
complete -c loadscope -n '__fish_seen_subcommand_from diff' -l since -x -d 'the older scan: a date, or how many before the newest'
complete -c loadscope -n '__fish_seen_subcommand_from diff' -l tool -x -a 'claude codex' -d 'compare scans of this tool'
complete -c loadscope -n '__fish_seen_subcommand_from diff' -l format -x -a 'text markdown json' -d 'the form of the result'
complete -c loadscope -n '__fish_seen_subcommand_from diff' -l json -d 'print one JSON object'

complete -c loadscope -n '__fish_seen_subcommand_from check' -a '(__fish_complete_directories)'
complete -c loadscope -n '__fish_seen_subcommand_from check' -l budget -r -F -d 'hold against this budget'
complete -c loadscope -n '__fish_seen_subcommand_from check' -l no-budget -d 'hold against no budget'
complete -c loadscope -n '__fish_seen_subcommand_from check' -l format -x -a 'text markdown json junit' -d 'the form of the result'
complete -c loadscope -n '__fish_seen_subcommand_from check' -l json -d 'print one JSON object'

complete -c loadscope -n '__fish_seen_subcommand_from open' -a '(__fish_complete_directories)'
complete -c loadscope -n '__fish_seen_subcommand_from open' -l recent -x -d 'one of the folders that were scanned last'
