# bash completion of kelvara-cli

_kelvara_cli_options() {
  local results='--units --rpn --fps --log --report --site --tester --notes --csv --json --grid'
  case $1 in
    '') echo '-h --help --version' ;;
    replay) echo "-h --help --whole $results" ;;
    record) echo "-h --help --port --com --demo --baud --reports --for --raw --speed $results" ;;
    convert) echo '-h --help' ;;
    ports) echo '-h --help --com' ;;
    simulate) echo '-h --help --site --link --seed --fault --log-commands --control' ;;
  esac
}

# The values of an option of a command; a blank for a file, nothing for free text.
_kelvara_cli_values() {
  case $1:$2 in
    replay:--units | record:--units) echo 'rfps aasync metres' ;;
    replay:--rpn | record:--rpn) echo 'dec hex' ;;
    replay:--fps | record:--fps) echo 'on off' ;;
    record:--com) echo '1 2 3 4 5 6 7 8 9 10 11 12' ;;
    ports:--com) echo '1= 2= 3= 4= 5= 6= 7= 8= 9= 10= 11= 12=' ;;
    simulate:--fault)
      echo 'none silent 24 partial late garbled lost-line-feeds flood hang-up slow'
      ;;
    *:--log | *:--report | *:--csv | *:--json | *:--raw | *:--port | *:--link | \
      *:--log-commands | simulate:--site | ports:=)
      echo ' '
      ;;
  esac
}

_kelvara_cli() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command='' choices=''
  COMPREPLY=()
  if ((COMP_CWORD > 1)); then
    command=${COMP_WORDS[1]}
  fi
  # "--units=hex" and "--com 1=/dev/ttyUSB0" are three words each to the shell.
  if [[ $word == '=' ]]; then
    before=$word
    word=''
  fi
  if [[ $before == '=' ]]; then
    local i=$((COMP_CWORD - 1))
    [[ ${COMP_WORDS[i]} == '=' ]] || i=$COMP_CWORD
    [[ ${COMP_WORDS[i - 1]} != --* ]] || before=${COMP_WORDS[i - 1]}
  fi
  choices=$(_kelvara_cli_values "$command" "$before")
  if [[ $choices == ' ' ]]; then
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
    return
  elif [[ -z $choices ]]; then
    case $before in
      --site | --tester | --notes | --baud | --reports | --for | --speed | --seed) return ;;
    esac
    if [[ -z $command ]]; then
      choices='replay record convert ports simulate'
      [[ $word != -* ]] || choices=
    elif [[ $command == convert && $COMP_CWORD -eq 2 && $word != -* ]]; then
      choices='rfps aasync metres ohms delay rpn rpndec port'
    elif [[ $command == replay && $word != -* ]]; then
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return
    fi
    [[ -n $choices ]] || choices=$(_kelvara_cli_options "$command")
  fi
  [[ $choices != *= ]] || compopt -o nospace 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
}
complete -F _kelvara_cli kelvara-cli
