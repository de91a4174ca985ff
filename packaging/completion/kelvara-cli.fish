# fish completion of kelvara-cli
complete -c kelvara-cli -f
complete -c kelvara-cli -n __fish_use_subcommand -s h -l help -d 'List the commands'
complete -c kelvara-cli -n __fish_use_subcommand -l version -d 'Print the version'
complete -c kelvara-cli -n __fish_use_subcommand -a replay -d 'Recorded text into results'
complete -c kelvara-cli -n __fish_use_subcommand -a record -d 'A live session'
complete -c kelvara-cli -n __fish_use_subcommand -a convert -d 'Convert a value'
complete -c kelvara-cli -n __fish_use_subcommand -a ports -d 'List the ports'
complete -c kelvara-cli -n __fish_use_subcommand -a simulate -d 'A simulated beltpack'

complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record convert ports simulate' -s h -l help -d 'List the options'

complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l units -x -a 'rfps aasync metres' -d 'Unit of the phases'
complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l rpn -x -a 'dec hex' -d 'Base of the RPNs'
complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l fps -x -a 'on off' -d 'Show the FPS'
complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l log -r -F -d 'Append the log to a file'
complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l report -r -F -d 'Write the HTML report'
complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l site -x -d 'Site for the report'
complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l tester -x -d 'Tester for the report'
complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l notes -x -d 'Notes for the report'
complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l csv -r -F -d 'Write the grid as CSV'
complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l json -r -F -d 'Write the results as JSON'
complete -c kelvara-cli -n '__fish_seen_subcommand_from replay record' -l grid -d 'Print the grid'

complete -c kelvara-cli -n '__fish_seen_subcommand_from replay' -l whole -d 'Each file is one report'

complete -c kelvara-cli -n '__fish_seen_subcommand_from record' -l port -r -F -d 'Record from this device'
complete -c kelvara-cli -n '__fish_seen_subcommand_from record' -l com -x -a '(seq 12)' -d 'Record from this port number'
complete -c kelvara-cli -n '__fish_seen_subcommand_from record' -l demo -d 'Record from the built-in beltpack'
complete -c kelvara-cli -n '__fish_seen_subcommand_from record' -l baud -x -d 'Rate of the line'
complete -c kelvara-cli -n '__fish_seen_subcommand_from record' -l reports -x -d 'End after so many reports'
complete -c kelvara-cli -n '__fish_seen_subcommand_from record' -l for -x -d 'End after so many seconds'
complete -c kelvara-cli -n '__fish_seen_subcommand_from record' -l raw -r -F -d 'Write a trace of the line'
complete -c kelvara-cli -n '__fish_seen_subcommand_from record' -l speed -x -d 'Speed of the demo clock'

complete -c kelvara-cli -n '__fish_seen_subcommand_from ports' -l com -x -a '(seq 12)=' -d 'The device of a port number'

complete -c kelvara-cli -n '__fish_seen_subcommand_from simulate' -l site -r -F -d 'The site of the beltpack'
complete -c kelvara-cli -n '__fish_seen_subcommand_from simulate' -l link -r -F -d 'Link to the terminal'
complete -c kelvara-cli -n '__fish_seen_subcommand_from simulate' -l seed -x -d 'Another walk'
complete -c kelvara-cli -n '__fish_seen_subcommand_from simulate' -l fault -x -a 'none silent 24 partial late garbled lost-line-feeds flood hang-up slow' -d 'What goes wrong on the line'
complete -c kelvara-cli -n '__fish_seen_subcommand_from simulate' -l log-commands -r -F -d 'Write the commands to a file'
complete -c kelvara-cli -n '__fish_seen_subcommand_from simulate' -l control -d 'Take commands from standard input'

complete -c kelvara-cli -n '__fish_seen_subcommand_from replay' -F
complete -c kelvara-cli -n '__fish_seen_subcommand_from convert' -a 'rfps aasync metres ohms delay rpn rpndec port'
