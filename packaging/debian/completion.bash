# Completion of report-runner's command line for bash.
_report_runner() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command=run endings=(fods ods) ending
  case ${COMP_WORDS[1]} in
    run | new | batch | check) command=${COMP_WORDS[1]} ;;
  esac
  COMPREPLY=()
  case $before in
    --macro | --book | --period | --timeout | --expect | --log | --workers | --jobs-per-worker | --memory-limit) return ;;
    --output-folder | --build-folder | --host-resources | --summary-folder)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -d -- "$word")
      return
      ;;
    --answers | --form-answers | --result)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return
      ;;
  esac
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$("$1" "$command" --help | grep -oE '^  --[a-z-]+')" -- "$word")
    return
  fi
  [[ $command != batch ]] || endings=(csv)
  compopt -o filenames
  mapfile -t COMPREPLY < <(
    [[ $COMP_CWORD -ne 1 ]] || compgen -W "run new batch check" -- "$word"
    compgen -d -- "$word"
    for ending in "${endings[@]}"; do compgen -f -X "!*.$ending" -- "$word"; done
  )
}
complete -F _report_runner report-runner
