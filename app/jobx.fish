# Completes command lines of jobx in fish. The program itself says what a word can become.

function __jobx_complete
    set -l words (commandline -opc)
    set -l token (commandline -ct)
    set -l current (string unescape -- "$token")
    set -l answers ($words[1] __complete $words[2..-1] "$current" 2>/dev/null)
    switch "$answers[1]"
        case directories
            __fish_complete_directories "$token"
        case files
            __fish_complete_path "$token"
        case words
            printf '%s\n' $answers[2..-1]
    end
end

complete -c jobx -f -a '(__jobx_complete)'
