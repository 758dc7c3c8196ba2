# Completion of kiln for fish. "kiln --complete" tells what can stand there.
function __kiln_completions
    set -l typed (commandline -ct)
    set -q typed[1]; or set typed ''
    set -l words (commandline -opc)
    set -l answers ($words[1] --complete $words[2..-1] $typed 2>/dev/null)
    set -q answers[2]; and printf '%s\n' $answers[2..-1]
    set -l start (string match -r -- '^--[^=]*=' $typed)
    set -l file (string replace -r -- '^--[^=]*=' '' $typed)
    set -l wanted (string split -- ' ' $answers[1])
    switch "$wanted[1]"
        case :folders
            printf "$start%s\n" (__fish_complete_directories $file)
        case :files
            set -l endings $wanted[2..-1]
            set -q endings[1]; or set endings ''
            for found in (complete -C "'' $file")
                set -l name (string split -f 1 \t -- $found)
                for ending in $endings
                    if string match -qi -- "*$ending" $name; or string match -q -- '*/' $name
                        echo "$start$name"
                        break
                    end
                end
            end
    end
end

complete -c kiln -f -a '(__kiln_completions)'
