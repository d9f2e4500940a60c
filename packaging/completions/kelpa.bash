# shellcheck shell=bash
# Completion of kelpa's options and commands for bash.
_kelpa() {
    local words='' word=${COMP_WORDS[COMP_CWORD]}
    COMPREPLY=()
    case ${COMP_WORDS[1]} in
        status) words='--json --follow --help' ;;
        history) words='--days --from --to --json --csv --show --help' ;;
        pause) words='until --help' ;;
        @KELPA_COMMAND_PATTERN@) words='--help' ;;
    esac
    if [[ ${COMP_WORDS[COMP_CWORD - 1]} == until ]]; then
        words='tomorrow'
    fi
    if ((COMP_CWORD == 1)); then
        words='status @KELPA_COMMANDS@ --show-history --speed --help --version'
    elif [[ ${COMP_WORDS[COMP_CWORD - 1]} == --speed ]]; then
        return
    elif [[ ${COMP_WORDS[1]} == --speed || ${COMP_WORDS[1]} == --show-history ]]; then
        words='--show-history --speed --help --version'
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _kelpa kelpa
