# Completion of cadjobs for fish. The candidates come from cadjobs itself: the first line says whether names of files or directories
# may follow as well, each other line is a candidate and its description.
function __cadjobs_complete
    set -l words (commandline --tokenize --current-process --cut-at-cursor) (commandline --current-token --cut-at-cursor)
    set -l lines (command cadjobs complete -- $words[2..-1] 2>/dev/null)
    set -q lines[1]; or return
    if set -q lines[2]
        printf '%s\n' $lines[2..-1]
    end
    switch $lines[1]
        case files
            __fish_complete_path $words[-1]
        case directories
            __fish_complete_directories $words[-1] ''
    end
end
complete --command cadjobs --no-files --keep-order --arguments '(__cadjobs_complete)'
