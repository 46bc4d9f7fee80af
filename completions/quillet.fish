# fish completion for quillet(1): the switch as the first word, then two files.

function __quillet_wants_file
    set -l words (commandline -opc)
    set -l limit 3
    if set -q words[2]; and string match -q -r '^[-/]b' -- $words[2]
        set limit 4
    end
    test (count $words) -lt $limit
end

complete -c quillet -f
complete -c quillet -n 'test (count (commandline -opc)) -eq 1' -o b -d 'Batch mode'
complete -c quillet -n __quillet_wants_file -F
