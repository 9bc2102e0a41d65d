# Completion of cadjobs for bash. The candidates come from cadjobs itself: the first line says whether names of files or directories
# may follow as well, each other line is a candidate and its description.
_cadjobs() {
    local -a words lines
    local line
    words=("${COMP_WORDS[@]:1:COMP_CWORD}")
    words=("${words[@]//[\"\'\\]/}")
    local current=${words[${#words[@]} - 1]}
    COMPREPLY=()
    mapfile -t lines < <(command cadjobs complete -- "${words[@]}" 2>/dev/null)
    for line in "${lines[@]:1}"; do
        line=${line%%$'\t'*}
        # An open quote, and the completion of file names, quote by themselves.
        if [[ ${lines[0]} = words && ${COMP_WORDS[COMP_CWORD]} != [\"\']* ]]; then
            printf -v line %q "$line"
        fi
        COMPREPLY+=("$line")
    done
    case ${lines[0]} in
        files | directories)
            compopt -o filenames 2>/dev/null
            local action=-f
            [[ ${lines[0]} = files ]] || action=-d
            mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen "$action" -- "$current")
            ;;
    esac
}
complete -F _cadjobs cadjobs
