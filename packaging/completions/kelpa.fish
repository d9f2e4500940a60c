# Completion of kelpa's options and commands for fish.
set -l commands status @KELPA_COMMANDS@
set -l none "not __fish_seen_subcommand_from $commands"
complete -c kelpa -f
complete -c kelpa -n $none -l show-history -d 'Show the history'
complete -c kelpa -n $none -l speed -x -d 'Let some seconds pass in one'
complete -c kelpa -s h -l help -d 'Show the help and end'
complete -c kelpa -n $none -l version -d 'Show the version and end'
complete -c kelpa -n $none -a status -d 'Tell state, time and water in one line'
@KELPA_FISH_COMMANDS@complete -c kelpa -n '__fish_seen_subcommand_from status' -l json -d 'One JSON object'
complete -c kelpa -n '__fish_seen_subcommand_from pause; and not __fish_seen_subcommand_from until' -a until -d 'Until a time like 14:30'
complete -c kelpa -n '__fish_seen_subcommand_from pause; and __fish_seen_subcommand_from until' -a tomorrow
complete -c kelpa -n '__fish_seen_subcommand_from status' -l follow -d 'A line at each change'
set -l of_history '__fish_seen_subcommand_from history'
complete -c kelpa -n $of_history -l days -x -d 'So many days up to today'
complete -c kelpa -n $of_history -l from -x -d 'From this day on'
complete -c kelpa -n $of_history -l to -x -d 'Up to this day'
complete -c kelpa -n $of_history -l json -d 'One JSON array'
complete -c kelpa -n $of_history -l csv -d 'Lines for a spreadsheet'
complete -c kelpa -n $of_history -l show -d 'A window of the Kelpa that runs'
