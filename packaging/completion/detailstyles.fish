# Completion of detailstyles: the program itself says what can stand where.
function __detailstyles_candidates
    for candidate in (detailstyles complete (commandline -cp) 2>/dev/null)
        switch $candidate
            case \tfiles
                __fish_complete_path (commandline -ct)
            case \tfolders
                __fish_complete_directories (commandline -ct)
            case '*'
                echo $candidate
        end
    end
end
complete -c detailstyles -f -a '(__detailstyles_candidates)'
