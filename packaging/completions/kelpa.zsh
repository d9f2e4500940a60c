#compdef kelpa
# Completion of kelpa's options and commands for zsh.
local -a commands=(
    'status:tell state, time and water in one line'
@KELPA_ZSH_COMMANDS@)
local context state line
_arguments -C \
    '(- *)'{-h,--help}'[show the help and end]' \
    '(- *)--version[show the version and end]' \
    '(1)--show-history[show the history]' \
    '(1)--speed[let some seconds pass in one]:seconds above 0 and up to 1000' \
    '1: :->command' \
    '*:: :->arguments' && return
case $state in
    command) _describe command commands ;;
    arguments) case $words[1] in
        status) _arguments '--json[one JSON object]' '--follow[a line at each change]' ;;
        history) _arguments '--days[so many days up to today]:days' '--from[from this day on]:day' \
            '--to[up to this day]:day' '--json[one JSON array]' '--csv[lines for a spreadsheet]' \
            '--show[a window of the Kelpa that runs]' ;;
        pause) _arguments '1:until:(until)' '2:time:(tomorrow)' ;;
    esac ;;
esac
