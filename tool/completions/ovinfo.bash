# bash completion of ovinfo                                             -*- shell-script -*-

# Lists the words that may follow an option; nothing when files may.
_ovinfo_values() {
    case $1 in
    --type) echo photograph luminescent structure ;;
    --jobs | --binning) echo 1 2 4 8 ;;
    esac
}

_ovinfo_options() {
    local common="-h --help"
    case $1 in
    show | get | check | diff | presets | camera) echo "$common --json" ;;
    spectral) echo "$common --json --svg" ;;
    study) echo "$common --json --jsonl --csv --recursive --jobs --from-file" ;;
    new) echo "$common --user --type --binning --output --force" ;;
    set) echo "$common" ;;
    esac
}

_ovinfo() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    local verbs="show get set new check diff study presets camera spectral"
    local values
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "$verbs -h --help --version" -- "$cur")
        return
    fi
    values=$(_ovinfo_values "$prev")
    if [ -n "$values" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$values" -- "$cur")
    elif [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_ovinfo_options "${COMP_WORDS[1]}")" -- "$cur")
    elif [ "$prev" != --user ]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        compopt -o filenames 2>/dev/null
    fi
}

complete -F _ovinfo ovinfo
