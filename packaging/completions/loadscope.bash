# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# bash completion for loadscope(1)

_loadscope() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} word command='' index
    COMPREPLY=()
    for ((index = 1; index < COMP_CWORD; index++)); do
        word=${COMP_WORDS[index]}
        case $command:$word in
        :scan | :status | :history | :leaderboard | :diff | :check | :open) command=$word ;;
        history:clear | history:import | history:export) command+=" $word" ;;
        esac
    done

    case $previous in
    --tool)
        mapfile -t COMPREPLY < <(compgen -W 'claude codex' -- "$current")
        return
        ;;
    --model)
        mapfile -t COMPREPLY < <(compgen -W 'sonnet opus haiku' -- "$current")
        return
        ;;
    --repository)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    --format)
        mapfile -t COMPREPLY < <(compgen -W 'text markdown json junit' -- "$current")
        return
        ;;
    --baseline | --budget | --output)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    --max-tokens | --top | --since | --jobs | --recent)
        return
        ;;
    esac

    local options='-h --help' words=''
    case $command in
    '') words='scan status history leaderboard diff check open' options+=' --version' ;;
    scan)
        options+=' --include-codex --codex-estimate --details --top --json --no-history --max-tokens --skip-check --model'
        options+=' --wait-for-servers --keep-environment --accept-estimate'
        options+=' --baseline --budget --no-budget --format --all --jobs'
        ;;
    status) options+=' --json' ;;
    history) words='clear export import' options+=' --repository --tool --json' ;;
    'history clear') options+=' --yes' ;;
    'history export') options+=' --output' ;;
    leaderboard) options+=' --tool --json' ;;
    diff) options+=' --repository --since --tool --format --json' ;;
    open) options+=' --recent' ;;
    check) options+=' --budget --no-budget --format --json' ;;
    esac

    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    elif [[ $command == diff || $command == 'history import' ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    elif [[ $command == scan || $command == check || $command == open ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    fi
}

complete -F _loadscope loadscope
