#compdef kiln
# Completion of kiln for zsh. "kiln --complete" tells what can stand there.

local -a typed answers described open endings
local line word meaning
typed=("${(@Q)words[2,CURRENT]}")
answers=("${(@f)$(${(Q)words[1]/#\~\//$HOME/} --complete "${(@)typed}" 2>/dev/null)}")
for line in "${(@)answers[2,-1]}"; do
  word=${line%%$'\t'*}
  meaning=${line#$word}
  if [[ $word == *= ]]; then open+=("$word"); else described+=("${word//:/\\:}:${meaning#$'\t'}"); fi
done
_describe -V 'kiln' described
(( ! $#open )) || compadd -S '' -a open
case $answers[1] in
  :folders) compset -P '--*='; _files -/ ;;
  :files) compset -P '--*='; _files ;;
  :files*)
    endings=("${(@)${=answers[1]}[2,-1]}")
    compset -P '--*='
    _files -g "(#i)*(${(j:|:)endings})(-.)"
    ;;
esac
