# Completes the commands and options of jobx in bash.
# shellcheck shell=bash

_jobx_options() {
    case $1 in
    info) echo "--all --compact --follow-links --help --json --layers --legacy --max-entries --messages --quiet --step --steps --strict --symbols --sysattr" ;;
    layers) echo "--columns --csv --follow-links --help --json --layer --legacy --max-entries --messages --quiet --sort --step --steps --strict --units --wide" ;;
    nets) echo "--columns --csv --follow-links --help --json --legacy --max-entries --messages --net --pins --quiet --sort --step --steps --strict --units --wide" ;;
    components) echo "--columns --csv --follow-links --help --json --legacy --max-entries --messages --name --quiet --sort --step --steps --strict --units --wide" ;;
    features) echo "--attribute --columns --csv --follow-links --help --json --layer --legacy --max-entries --messages --ndjson --near --net --quiet --sort --step --steps --strict --symbol --units --wide" ;;
    tree) echo "--follow-links --help --json --max-entries --messages --quiet --strict" ;;
    packages | panel) echo "--columns --csv --follow-links --help --json --legacy --max-entries --messages --quiet --sort --step --steps --strict --units --wide" ;;
    json) echo "--follow-links --help --latin1 --layer --legacy --max-entries --messages --no-features --quiet --step --steps --strict --sysattr" ;;
    diff) echo "--align --follow-links --help --ignore-line-numbers --json --legacy --max-entries --messages --only --quiet --strict --tolerance" ;;
    write) echo "--allow-incomplete --follow-links --force --help --max-entries --name --no-eda --output --quiet --rebuild-steps --scale --step --steps" ;;
    *) echo "--help --version" ;;
    esac
}

# The steps of the job among the words, as its matrix names them; without names that a shell would take apart.
_jobx_steps() {
    local word matrix
    for word in "${COMP_WORDS[@]:2}"; do
        for matrix in "$word"/matrix/matrix "$word"/MATRIX/MATRIX; do
            [[ -f $matrix ]] || continue
            awk '{ sub(/\r$/, "") } /^ *STEP *\{/ { inside = 1 } /^ *\}/ { inside = 0 }
                 inside && sub(/^ *NAME=/, "") && /^[A-Za-z0-9_.+-]+$/' "$matrix"
            return
        done
    done
}

_jobx() {
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command='' taken='' line
    ((COMP_CWORD > 1)) && command=${COMP_WORDS[1]}
    COMPREPLY=()

    case $before in
    --scale | --tolerance | --name | --max-entries | --only | --columns | --sort | --net | --layer | \
        --symbol | --attribute | --near)
        return
        ;;
    --messages)
        mapfile -t COMPREPLY < <(compgen -W "all none" -- "$current")
        return
        ;;
    --units)
        mapfile -t COMPREPLY < <(compgen -W "mm inch" -- "$current")
        return
        ;;
    --sysattr)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    --step | --steps)
        [[ $current == *,* ]] && taken=${current%,*},
        while IFS= read -r line; do
            [[ $taken$line == "$current"* ]] && COMPREPLY+=("$taken$line")
        done < <(_jobx_steps)
        return
        ;;
    esac

    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_jobx_options "$command")" -- "$current")
    elif [[ -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W "components diff features info json layers nets packages panel tree write" -- "$current")
    else
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$current") # a job is a directory
    fi
}

complete -F _jobx jobx
