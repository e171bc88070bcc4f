# bash completion for tarnwell
_tarnwell()
{
    local cur prev words cword
    _init_completion || return
    local commands="add status list done start pause toggle export import backups restore sync"
    if [[ $cword -eq 1 ]]; then
        COMPREPLY=($(compgen -W "$commands --help --version --ui-test tarnwell://quickadd" -- "$cur"))
        return
    fi
    case $prev in
        --format) COMPREPLY=($(compgen -W "json csv ics" -- "$cur")); return ;;
        --output|-o) _filedir; return ;;
        --day|--from|--to|--title|--minutes) return ;;
    esac
    local options="--help"
    case ${words[1]} in
        add) options+=" --title --minutes --urgent" ;;
        status) options+=" --json --follow" ;;
        list) options+=" --json --day" ;;
        sync) options+=" --status --json" ;;
        export) options+=" --format --from --to --output" ;;
        import) _filedir json; return ;;
        restore) _filedir sqlite; return ;;
    esac
    COMPREPLY=($(compgen -W "$options" -- "$cur"))
}
complete -F _tarnwell tarnwell
