# shellcheck shell=bash
# Completion of detailstyles: the program itself says what can stand where.

# What replaces the word: bash divides words at colons and equals signs, and replaces the last piece alone.
_detailstyles_reply() {
    local text=$1 line=$2 word=$3 i
    case $word in
    \"* | \'*) ;; # the quote that is open holds everything
    *)
        printf -v text %q "$text"
        for ((i = ${#text} - 1; i >= 0; --i)); do
            if [[ ${text:i:1} == [:=] && $line == *"${text:0:i+1}$word" ]]; then
                text=${text:i+1}
                break
            fi
        done
        ;;
    esac
    COMPREPLY+=("$text")
}

_detailstyles() {
    local line=${COMP_LINE:0:COMP_POINT} word=${COMP_WORDS[COMP_CWORD]} candidate paths
    [[ $word != [:=] ]] || word=
    while IFS= read -r candidate; do
        case $candidate in
        $'\tfiles' | $'\tfolders')
            compopt -o filenames
            paths=-f
            [[ $candidate != *folders ]] || paths=-d
            while IFS= read -r candidate; do COMPREPLY+=("$candidate"); done < <(compgen $paths -- "$word")
            ;;
        *)
            [[ $candidate != *=$'\t'* ]] || compopt -o nospace
            _detailstyles_reply "${candidate%%$'\t'*}" "$line" "$word"
            ;;
        esac
    done < <("${COMP_WORDS[0]}" complete "$line" 2>/dev/null)
}
complete -F _detailstyles detailstyles
