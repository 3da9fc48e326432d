# Completes the command line of tintwerk in bash. A test compares the options with the program's own help.

_tintwerk_options() { # COMMAND
    local printer='--ppd --printer --driver --store --language --gui-mode --windows-version --config-dir --custom-size --trace --json'
    case $1 in
    preferences | properties)
        echo "$printer --page --set --choose --check --press --show --screenshot --tour --apply --ok --cancel --answer" \
            "--script --record --pace --time-limit"
        ;;
    print)
        echo "$printer --document --no-document-name --job --preview --offline --probe-server --install-dir --server" \
            "--all-events"
        ;;
    check) echo '--notes --quiet --rules --only --ignore --pages --config-dir --strict --json --format' ;;
    features | ink | devmode | diff) echo '--json' ;;
    esac
}

_tintwerk_features() { # PPD: the keywords of its features
    sed -n 's/^\*OpenUI  *\*\([A-Za-z0-9]*\).*/\1/p' -- "$1" 2>/dev/null
}

_tintwerk_feature_options() { # PPD FEATURE: the options of a feature
    sed -n "s/^\*$2  *\([^/: ]*\)[/:].*/\1/p" -- "$1" 2>/dev/null
}

# Answers with the words that may follow; the files among them come from bash itself.
_tintwerk() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]} words='' ppd='' i
    local commands='preferences properties print features ink devmode check diff'
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        words="$commands help --help --version"
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
    fi
    for ((i = 2; i < COMP_CWORD; i++)); do
        [ "${COMP_WORDS[i]}" = --ppd ] && ppd=${COMP_WORDS[i + 1]}
        [ "$ppd" = = ] && ppd=${COMP_WORDS[i + 2]}
    done
    # bash takes "--ppd=x" and "Feature=Option" apart at the equals sign.
    [ "$current" = = ] && current='' previous='='
    if [ "$previous" = = ]; then
        i=$((COMP_CWORD - 1))
        [ "${COMP_WORDS[i]}" = = ] && i=$((i - 1))
        previous=${COMP_WORDS[i]}
        if [[ $previous != --* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$(_tintwerk_feature_options "$ppd" "$previous")" -- "$current")
            return
        fi
    fi
    case $previous in
    --store | --config-dir | --screenshot | --tour | --install-dir)
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    --script | --record)
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    --ppd)
        mapfile -t COMPREPLY < <(compgen -f -X '!*.[pP][pP][dD]' -- "$current"; compgen -f -X '!*.[pP][pP][dD].[gG][zZ]' -- "$current"; compgen -d -- "$current")
        return
        ;;
    --language) words='en de' ;;
    --format) words='text json sarif' ;;
    --only | --ignore) words=$(tintwerk check --rules 2>/dev/null | cut -d ' ' -f 1) ;;
    --answer) words='ok cancel' ;;
    --page) words='main layout colors correction consumption ink screen advanced information' ;;
    --set | --choose | --check | --show) words=$(_tintwerk_features "$ppd") ;;
    --printer | --driver | --gui-mode | --windows-version | --custom-size | --press | --pace | --time-limit | --document | --job | --server)
        return
        ;;
    help) words=$commands ;;
    *)
        if [[ $current == -* ]]; then
            words="$(_tintwerk_options "$command") --help"
        else
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
        fi
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    case $previous in
    --set | --choose) COMPREPLY=("${COMPREPLY[@]/%/=}") && compopt -o nospace 2>/dev/null ;;
    esac
}

complete -o filenames -F _tintwerk tintwerk
