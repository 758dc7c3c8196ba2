#!/usr/bin/env bash
# Installs a build below a folder, as a package has it, and looks for everything where a distribution looks for it.
#
#   installed_test.sh BUILD-FOLDER
set -euo pipefail
build=$1
work=$(mktemp -d "${TMPDIR:-/tmp}/kiln-installed-XXXXXX")
trap 'rm -rf "$work"' EXIT
export HOME=$work/home LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
unset DESTDIR XDG_DATA_HOME XDG_CONFIG_HOME XDG_CACHE_HOME LANGUAGE
mkdir -p "$HOME"
cd "$work"

fail() {
  echo "Not so: $1" >&2
  [[ ! -s log ]] || tail -n 40 log >&2
  exit 1
}

# fact SENTENCE COMMAND...: the command succeeds, and its output is in the file log.
fact() {
  "${@:2}" >log 2>&1 || fail "$1"
  echo "$1"
}

install_component() { DESTDIR=$work/root cmake --install "$build" --prefix /usr --component "$1" >/dev/null; }
for component in runtime pictures window queue zorvueffect-papers; do install_component "$component"; done
usr=$work/root/usr
PATH=$usr/bin:$PATH

# Every file has its place, and every place its file.
places=(
  'usr/bin/kiln'
  'usr/lib[^ ]*/kiln/(Zorvueffect|kiln-(archives|pictures|printers|window))\.so'
  'usr/share/kiln/(base|check|effect|window)/content/.+'
  'usr/share/kiln/models/[a-z]+\.xml'
  'usr/share/kiln/sentences/[a-z]{2}-[A-Z]{2}\.po'
  'usr/share/man/man1/kiln(-[a-z]+)?\.1\.gz'
  'usr/share/man/(de|fr|ja|zh_CN|zh_TW)/man1/kiln(-[a-z]+)?\.1\.gz'
  'usr/share/bash-completion/completions/kiln'
  'usr/share/zsh/vendor-completions/_kiln'
  'usr/share/fish/vendor_completions\.d/kiln\.fish'
  'usr/share/applications/kiln\.desktop'
  'usr/share/icons/hicolor/scalable/apps/kiln\.svg'
  'usr/share/metainfo/org\.zorvueffect\.kiln\.metainfo\.xml'
  'usr/share/doc/zorvueffect/(copyright|changelog\.gz)'
  'usr/share/doc/zorvueffect/docs/[a-z-]+\.md'
  'usr/lib/cups/filter/kiln'
)
(cd root && find . -type f -printf '%P\n' | sort) >files
nowhere_else() { ! grep -vxE "$(IFS='|' && echo "${places[*]}")" files; }
fact "every file is in a place where a distribution looks" nowhere_else
for place in "${places[@]}"; do fact "there is $place" grep -xE "$place" files; done

fact "the installed kiln tells the version of the project" grep -q " $(kiln --version | cut -d' ' -f2) " \
  <(zcat "$usr/share/doc/zorvueffect/changelog.gz" | tr '()' '  ')
fact "the installed kiln makes a sample" kiln sample letter.pdf
fact "the installed kiln prints" kiln print letter.pdf printed.pdf --watermark Draft
fact "the installed kiln draws its window" kiln show letter.pdf --screenshot window.png
fact "the installed kiln draws pages" kiln picture printed.pdf page.png

# The filter of print queues, whose program is not installed where it says while this is below a folder.
filter=$work/root/usr/lib/cups/filter/kiln
fact "the filter is a script that calls kiln" grep -qE '^exec /[^ ]*/bin/kiln filter "\$@"$' "$filter"
fact "the filter may be changed by its owner alone" test "$(stat -c %a "$filter")" = 755
fact "the filter is a valid script" sh -n "$filter"
fact "the folder of the queues' settings is there" test -d root/etc/kiln

# The manual.
commands() { kiln help | sed -nE 's/^  ([a-z]+)  +[A-Z].*/\1/p'; }
commands >commands
fact "kiln has commands" test "$(wc -l <commands)" -gt 5
man_is_clean() {
  local page
  while IFS= read -r page; do
    local faults
    # A language without spaces has lines that are hard to break.
    faults=$(man --warnings --encoding=UTF-8 --local-file "$page" 2>&1 >/dev/null | grep -v "can't break line" || true)
    [[ -z $faults ]] || { echo "$page: $faults"; return 1; }
  done < <(find "$usr/share/man" -name '*.gz')
}
for language in . de fr ja zh_CN zh_TW; do
  folder=$usr/share/man/$language/man1
  while IFS= read -r command; do
    [[ -f $folder/kiln-$command.1.gz ]] || fail "kiln $command has a page in $folder"
  done <commands
  fact "every command has a page in man/$language" test -f "$folder/kiln.1.gz"
done
fact "man reads every page without a warning" man_is_clean
fact "the pages are translated" grep -q 'Druckt ein PDF' <(zcat "$usr/share/man/de/man1/kiln-print.1.gz")

# The entry in menus.
fact "the entry in menus is valid" desktop-file-validate "$usr/share/applications/kiln.desktop"
fact "the description for software catalogues is valid" \
  appstreamcli validate --no-net "$usr"/share/metainfo/org.zorvueffect.kiln.metainfo.xml
fact "the entry opens PDFs" grep -qx 'MimeType=application/pdf;' "$usr/share/applications/kiln.desktop"
for key in GenericName Comment Keywords; do
  fact "the entry has its $key in six languages" \
    test "$(grep -cE "^$key(\[(de|fr|ja|zh_CN|zh_TW)\])?=" "$usr/share/applications/kiln.desktop")" = 6
done

# Completion, by the shells themselves. completed SHELL LINE: what it offers at the end of the line.
cat >complete.bash <<'END'
source "$1"
COMP_LINE=$2 COMP_POINT=${#2} COMP_WORDS=() COMPREPLY=()
rest=$2
while [[ $rest =~ ^[[:space:]]*([=:]+|\"[^\"]*\"?|[^[:space:]=:]+)(.*)$ ]]; do
  COMP_WORDS+=("${BASH_REMATCH[1]}")
  rest=${BASH_REMATCH[2]}
done
[[ $2 != *[[:space:]] || $rest != [[:space:]]* ]] || COMP_WORDS+=("")
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
_kiln
printf '%s\n' "${COMPREPLY[@]}"
END
# zsh completes in its line editor alone: so one is run in a pseudo-terminal, and keeps what is offered to it in a file.
mkdir zsh-settings
cat >zsh-settings/.zshrc <<'END'
PROMPT=
fpath=("$COMPLETION" $fpath)
autoload -U compinit && compinit -u -D
compadd() {
  # What only asks for matches is the completion system's own.
  if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then builtin compadd "$@"; return; fi
  local -a offered
  builtin compadd -O offered "$@"
  (( ! $#offered )) || print -rl -- "${(@)offered}" >>offered
  builtin compadd "$@"
}
zle-line-init() { print READY''NOW }
zle -N zle-line-init
comppostfuncs=(exit)
END
cat >complete.zsh <<'END'
zmodload zsh/zpty
zpty shell ZDOTDIR=$PWD/zsh-settings COMPLETION=${1:h} TERM=dumb zsh -d -i
zpty -r shell text '*READYNOW*'
zpty -n -w shell "$2"$'\t'
while zpty -r shell text; do :; done
cat offered 2>/dev/null
rm -f offered
END
completed() {
  case $1 in
    bash) bash complete.bash "$usr/share/bash-completion/completions/kiln" "$2" ;;
    fish) fish --no-config --command "source '$usr/share/fish/vendor_completions.d/kiln.fish'; complete -C '$2'" ;;
    zsh) zsh -f complete.zsh "$usr/share/zsh/vendor-completions/_kiln" "$2" ;;
  esac
}
# offers SHELL LINE WORD: whether it does, for that line.
offers() {
  local offered
  offered=$(completed "$1" "$2")
  grep -qE -- "(^|[[:space:]])$3([[:space:]]|\$)" <<<"$offered" || { echo "$offered" && false; }
}
offers_none() { ! offers "$@"; }
mkdir folder && : >note.pdf && : >note.txt
for shell in bash fish zsh; do
  fact "$shell completes commands" offers $shell 'kiln wat' watermark
  fact "$shell completes the parts of a command" offers $shell 'kiln overlay ren' rename
  fact "$shell completes options" offers $shell 'kiln print letter.pdf --wat' --watermark-colour
  fact "$shell completes the names of models" offers $shell 'kiln print --model kv' kvt
  fact "$shell completes the names of watermarks" offers $shell 'kiln print --watermark Dr' Draft
  fact "$shell completes PDFs" offers $shell 'kiln print not' note.pdf
  fact "$shell completes no other files then" offers_none $shell 'kiln print not' note.txt
  fact "$shell completes folders" offers $shell 'kiln print --home f' folder/?
done
fact "bash completes what follows a break" offers bash 'kiln print --set MirrorImage=M' MirrorImage
fact "bash completes the value of an option with its name" offers bash 'kiln drive --mode=Pre' PrePrint
fact "bash escapes a name with spaces" offers bash 'kiln print --watermark For' 'For\\ internal\\ use'
fact "bash takes a name in quotation marks as it is" offers bash 'kiln print --watermark "For' 'For internal use'
fact "fish completes settings" offers fish 'kiln print --set MirrorImage=M' MirrorImage=MirrorImage

# The module that draws pages is left out.
rm "$usr"/lib*/kiln/kiln-pictures.so
fact "kiln prints without the module that draws pages" kiln print letter.pdf printed.pdf --watermark Draft
fact "kiln drives the tab without it" grep -q '"value":"MirrorImage"' \
  <(printf 'click ePTKWPageMirrorImage\nget MirrorImage\n' | kiln drive)
no_picture() { local status=0; kiln picture printed.pdf page.png || status=$?; ((status == 1)); }
fact "kiln draws no page without it" no_picture
fact "kiln names the module that is missing" grep -q kiln-pictures <(kiln picture printed.pdf page.png 2>&1)
