# Completion of updatekey for bash.
_updatekey() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local command="" word options="--json --help"
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in make | check | info | rehearse)
            command=$word
            break
            ;;
        esac
    done
    compopt -o filenames 2>/dev/null
    case $previous in
        --app | --gui | --device | --keep)
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
        --notes | --updater)
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        --version | --flash-size | --languages | --timeout)
            [ -z "$command" ] || return
            ;;
    esac
    case $command in
        "") options="make check info rehearse --json --help --version" ;;
        make) options+=" --app --gui --notes --version --flash-size --languages" ;;
        check) options+=" --flash-size --languages" ;;
        rehearse) options+=" --device --updater --keep --timeout --hidden --flash-size --languages" ;;
    esac
    if [[ -z $command || $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
    fi
}
complete -F _updatekey updatekey
