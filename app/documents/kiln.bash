# Completion of kiln for bash. "kiln --complete" tells what can stand there.

# Offers the files or folders that begin with $1 and have one of the other arguments as their ending, if there are any.
_kiln_files() {
  local file ending
  while IFS= read -r file; do
    if (($# == 1)) || [[ -d ${file/#\~\//$HOME/} ]]; then COMPREPLY+=("$file"); continue; fi
    for ending in "${@:2}"; do
      if [[ ${file,,} == *"$ending" ]]; then COMPREPLY+=("$file"); fi
    done
  done < <(compgen -f -- "$1")
  compopt -o filenames 2>/dev/null
}

_kiln() {
  # The words up to the cursor. Bash breaks them at "=" and ":" too, which are parts of a word to kiln.
  local line=${COMP_LINE:0:COMP_POINT} words=() i rest word
  for ((i = 0; i <= COMP_CWORD; i++)); do
    rest=${line#"${line%%[![:space:]]*}"}
    word=${COMP_WORDS[i]}
    ((i < COMP_CWORD)) || word=$rest
    if [[ $rest == "$line" ]] && ((i > 0)); then words[-1]+=$word; else words+=("$word"); fi
    line=${rest#"$word"}
  done
  # Without what only the shell reads: quotation marks and backslashes.
  local quote= program=${words[0]/#\~\//$HOME/}
  [[ ${words[-1]} != [\"\']* ]] || quote=${words[-1]:0:1}
  for i in "${!words[@]}"; do
    word=${words[i]//[\"\']/}
    words[i]=${word//\\/}
  done

  local typed=${words[-1]} answers=()
  mapfile -t answers < <("$program" --complete "${words[@]:1}" 2>/dev/null)
  # Readline replaces what follows the last break.
  local breaks= start=
  [[ $COMP_WORDBREAKS != *=* ]] || breaks+==
  [[ $COMP_WORDBREAKS != *:* ]] || breaks+=:
  [[ -z $breaks || -n $quote ]] || start=${typed%"${typed##*[$breaks]}"}

  COMPREPLY=()
  for word in "${answers[@]:1}"; do
    word=${word%%$'\t'*}
    [[ $word == "$typed"* ]] || continue
    [[ $word != *= ]] || compopt -o nospace 2>/dev/null
    word=${word#"$start"}
    [[ -n $quote ]] || printf -v word %q "$word"
    COMPREPLY+=("$word")
  done
  local file=${typed#--*=}
  case ${answers[0]-} in
    :folders) mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -d -- "$file"); compopt -o filenames 2>/dev/null ;;
    :files*) read -ra answers <<<"${answers[0]}"; _kiln_files "$file" "${answers[@]:1}" ;;
  esac
}

complete -F _kiln kiln
