# Completes command lines of jobx in bash. The program itself says what a word can become.
# shellcheck shell=bash

_jobx() {
    local line=${COMP_LINE:0:COMP_POINT} part=${COMP_WORDS[COMP_CWORD]} words=() answers=() kind answer
    COMPREPLY=()
    # Words as they will be passed; bash splits them at "=", too. Without -r, a backslash keeps a blank in its word.
    # shellcheck disable=SC2162
    read -a words <<<"$line"
    [[ $line == *[[:blank:]] ]] && words+=('')
    local current=${words[-1]#[\"\']} quote=${words[-1]:0:1}

    mapfile -t answers < <("${words[0]/#~\//$HOME/}" __complete "${words[@]:1:${#words[@]}-2}" "$current" 2>/dev/null)
    kind=${answers[0]-}
    case $kind in
    directories | files)
        compopt -o filenames 2>/dev/null
        local action=-f
        [[ $kind == directories ]] && action=-d
        mapfile -t COMPREPLY < <(compgen "$action" -- "$current")
        ;;
    words)
        # Only what follows the last sign at which bash splits is replaced.
        [[ $part == [=:] ]] && part=
        local kept=${current%"${part#[\"\']}"}
        for answer in "${answers[@]:1}"; do
            answer=${answer%%$'\t'*}
            answer=${answer:${#kept}}
            # Names come from a job, so none of their signs may mean anything to the shell.
            case $quote in
            \")
                [[ $answer == *!* ]] && continue
                answer=${answer//\\/\\\\} answer=${answer//\"/\\\"} answer=${answer//\$/\\\$} answer=${answer//\`/\\\`}
                ;;
            \')
                [[ $answer == *\'* ]] && continue
                ;;
            *)
                [[ $answer == *[!A-Za-z0-9_.,/@%+=:-]* ]] && printf -v answer %q "$answer"
                ;;
            esac
            COMPREPLY+=("$answer")
        done
        ;;
    esac
}

complete -F _jobx jobx
