# Completion of report-runner's command line for bash.
_report_runner() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} ending
  COMPREPLY=()
  case $before in
    --macro | --book | --timeout | --expect | --log) return ;;
    --output-folder | --build-folder | --host-resources)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -d -- "$word")
      return
      ;;
    --answers | --form-answers)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return
      ;;
  esac
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$("$1" --help | grep -oE '^  --[a-z-]+')" -- "$word")
    return
  fi
  compopt -o filenames
  mapfile -t COMPREPLY < <(
    [[ $COMP_CWORD -ne 1 ]] || compgen -W new -- "$word"
    compgen -d -- "$word"
    for ending in fods ods; do compgen -f -X "!*.$ending" -- "$word"; done
  )
}
complete -F _report_runner report-runner
