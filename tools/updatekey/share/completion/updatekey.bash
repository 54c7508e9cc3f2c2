# Completion of updatekey for bash. scripts/lib/check-completion compares its words with the help.
_updatekey() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local command='' word options=''
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case " make check info image sticks write diff rehearse diagnose " in *" $word "*) command=$word; break ;; esac
    done
    compopt -o filenames 2>/dev/null
    case " --app --gui --device " in *" $previous "*)
        mapfile -t COMPREPLY < <(compgen -d -- "$current"); return ;; esac
    case " --notes --updater --keep --manifest " in *" $previous "*)
        mapfile -t COMPREPLY < <(compgen -f -- "$current"); return ;; esac
    case $command in
        '') options='make check info image sticks write diff rehearse diagnose --help --version --help-all --json --quiet' ;;
        make) options='--help --help-all --app --gui --notes --version --flash-size --languages --machine --accept' ;;
        check) options='--help --help-all --flash-size --languages --machine --accept' ;;
        info) options='--help --help-all' ;;
        image) options='--help --help-all --size --no-partition-table --flash-size --languages --machine --accept' ;;
        sticks) options='--help --help-all' ;;
        write) options='--help --help-all --replace --eject --not-a-stick --flash-size --languages --machine --accept' ;;
        diff) options='--help --help-all' ;;
        rehearse) options='--help --help-all --device --updater --keep --timeout --hidden --flash-size --languages --machine --accept' ;;
        diagnose) options='--help --help-all --manifest --languages --machine' ;;
    esac
    if [[ -z $command || $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _updatekey updatekey
