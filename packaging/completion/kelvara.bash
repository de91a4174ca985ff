# bash completion of kelvara

_kelvara() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  COMPREPLY=()
  # "--com 1=/dev/ttyUSB0" and "--site=FILE" are three words each to the shell.
  if [[ $word == '=' ]]; then
    before=$word
    word=''
  fi
  case $before in
    --com)
      mapfile -t COMPREPLY < <(compgen -W '1= 2= 3= 4= 5= 6= 7= 8= 9= 10= 11= 12=' -- "$word")
      compopt -o nospace 2>/dev/null
      ;;
    --site | --raw | =)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      ;;
    *)
      mapfile -t COMPREPLY < <(
        compgen -W '-h --help --version --demo --site --com --raw --test-report' -- "$word"
      )
      ;;
  esac
}
complete -F _kelvara kelvara
