#compdef kelpa
# Completion of kelpa's options and commands for zsh.
local -a commands=(
    'status:tell state, time and water in one line'
@KELPA_ZSH_COMMANDS@)
local context state line
_arguments -C \
    '(- *)'{-h,--help}'[show the help and end]' \
    '(- *)--version[show the version and end]' \
    '(1)--speed[let some seconds pass in one]:seconds above 0 and up to 1000' \
    '1: :->command' \
    '*:: :->arguments' && return
case $state in
    command) _describe command commands ;;
    arguments) [[ $words[1] == status ]] && _arguments \
        '--json[one JSON object]' '--follow[a line at each change]' ;;
esac
