# Completion of kelpa's options and commands for fish.
set -l commands status pause resume toggle skip water settings quit
set -l none "not __fish_seen_subcommand_from $commands"
complete -c kelpa -f
complete -c kelpa -n $none -l speed -x -d 'Let some seconds pass in one'
complete -c kelpa -s h -l help -d 'Show the help and end'
complete -c kelpa -n $none -l version -d 'Show the version and end'
complete -c kelpa -n $none -a status -d 'Tell state, time and water in one line'
complete -c kelpa -n $none -a pause -d 'Stop the work period until somebody resumes it'
complete -c kelpa -n $none -a resume -d 'Begin a work period where there is none'
complete -c kelpa -n $none -a toggle -d 'Stop, or begin'
complete -c kelpa -n $none -a skip -d 'End the break, where its screen offers that'
complete -c kelpa -n $none -a water -d 'Show the water panel'
complete -c kelpa -n $none -a settings -d 'Show the preferences'
complete -c kelpa -n $none -a quit -d 'End the program'
complete -c kelpa -n '__fish_seen_subcommand_from status' -l json -d 'One JSON object'
complete -c kelpa -n '__fish_seen_subcommand_from status' -l follow -d 'A line at each change'
