#compdef jobx
# Completes command lines of jobx in zsh. The program itself says what a word can become.

_jobx() {
    local -a answers values shown
    local answer
    answers=("${(@f)$("${(Q)words[1]}" __complete "${(@Q)words[2,CURRENT-1]}" "${(Q)PREFIX}" 2>/dev/null)}")
    case $answers[1] in
    directories) _files -/ ;;
    files) _files ;;
    words)
        for answer in "${(@)answers[2,-1]}"; do
            values+=("${answer%%$'\t'*}")
            shown+=("${answer/$'\t'/  -- }")
        done
        compadd -M 'm:{[:lower:][:upper:]}={[:upper:][:lower:]}' -l -d shown -a values
        ;;
    esac
}

_jobx "$@"
