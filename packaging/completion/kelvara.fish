# fish completion of kelvara
complete -c kelvara -f
complete -c kelvara -s h -l help -d 'List the options'
complete -c kelvara -l version -d 'Print the version'
complete -c kelvara -l demo -d 'Use the built-in beltpack'
complete -c kelvara -l site -r -F -d 'The site of the built-in beltpack'
complete -c kelvara -l com -x -a '(seq 12)=' -d 'The device of a port number'
complete -c kelvara -l raw -r -F -d 'Keep a trace of the line'
complete -c kelvara -l test-report -d 'Write the test report and end'
