# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

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
    local archive="--failures --jobs --from-file --no-follow --relative-to --shard --merge"
    case $1 in
    show) echo "$common --json --jsonl --keys" ;;
    get) echo "$common --json --jsonl --default --from-file --from-file0" ;;
    set) echo "$common --add --dry-run --from-file --from-file0" ;;
    unset) echo "$common --dry-run --from-file --from-file0" ;;
    new) echo "$common --user --type --binning --output --force" ;;
    check) echo "$common --json --jsonl --quiet --recursive --shard" ;;
    diff | presets | camera) echo "$common --json" ;;
    strip) echo "$common" ;;
    study) echo "$common --json --jsonl --csv --recursive --spreadsheet --column --all $archive" ;;
    index) echo "$common --output $archive" ;;
    report)
        echo "$common --output --title --group-by --subject --from-jsonl --from-index" \
            "--jobs --from-file --no-follow --relative-to"
        ;;
    query) echo "$common --csv --jsonl --where" ;;
    spectral) echo "$common --json --svg" ;;
    esac
}

# A word as the program gets it: without quotes.
_ovinfo_plain() {
    local word=${1//[\"\'\\]/}
    echo "${word/#\~\//$HOME/}"
}

# Lists the sections of a file, or the keys of one of its sections.
_ovinfo_names() {
    ovinfo show --keys -- "$1" 2>/dev/null | awk -F '\t' -v section="$2" '
        section == "" && NF == 1
        NF == 2 && tolower($1) == tolower(section) { print $2 }'
}

# Lists what may follow the last file that was named: a section, then a key.
_ovinfo_words() {
    local i file
    for ((i = COMP_CWORD - 1; i > 1; i--)); do
        file=$(_ovinfo_plain "${COMP_WORDS[i]}")
        [ -f "$file" ] && break
    done
    case $((i > 1 ? COMP_CWORD - i : 0)) in
    1) _ovinfo_names "$file" "" ;;
    2) _ovinfo_names "$file" "$(_ovinfo_plain "${COMP_WORDS[i + 1]}")" ;;
    esac
}

_ovinfo() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    local verbs="show get set unset new check strip diff study index query report presets camera spectral"
    local values word
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
    elif [[ ! $prev =~ ^--(user|default|title|group-by|subject)$ ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        case ${COMP_WORDS[1]} in
        get | set | unset)
            cur=$(_ovinfo_plain "$cur")
            while IFS= read -r word; do
                [[ ${word,,} == "${cur,,}"* ]] && COMPREPLY+=("$word")
            done < <(_ovinfo_words)
            ;;
        esac
    fi
}

complete -F _ovinfo ovinfo
