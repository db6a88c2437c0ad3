# Completion of kivhost for bash. Formats and settings are what the program itself lists.

# Words of which the current one begins the name, quoted as a command line needs them.
_kivhost_words()
{
    local word
    while IFS= read -r word; do
        printf -v word %q "$word"
        [[ $word == "$cur"* ]] && COMPREPLY+=("$word ")
    done
}

# Files with one of the endings, and directories on the way to them.
_kivhost_files()
{
    local name ending word=${cur//\\/} # as it lies on the disk; the shell quotes it again
    compopt -o filenames -o nosort +o nospace 2>/dev/null
    while IFS= read -r name; do
        COMPREPLY+=("$name")
    done < <(compgen -d -- "$word")
    for ending in "$@"; do
        while IFS= read -r name; do
            [[ -d $name ]] || COMPREPLY+=("$name")
        done < <(compgen -f -X "!*.$ending" -- "$word")
    done
}

_kivhost_settings()
{
    "${program[@]}" settings 2>/dev/null
}

# NAME= of every setting, or what stands behind NAME= where it is one of a few words.
_kivhost_assignment()
{
    if [[ $cur != *=* ]]; then
        local name
        for name in $(_kivhost_settings | sed -n 's/^\([A-Za-z_0-9]*\) = .*/\1/p'); do
            [[ $name == "$cur"* ]] && COMPREPLY+=("$name=")
        done
        return
    fi
    local name=${cur%%=*}
    cur=${cur#*=}
    _kivhost_words < <(_kivhost_settings | sed -n "/^$name = /,/^[^ ]/{
        s/^    true or false;.*/true, false/
        t list
        s/^    one of \([^;(]*\).*/\1/
        t list
        b
        :list
        s/[ ;]*\$//
        s/, */\n/g
        p
    }")
    [[ $COMP_WORDBREAKS == *=* ]] || COMPREPLY=("${COMPREPLY[@]/#/$name=}")
}

_kivhost()
{
    local cur prev='' verb='' word glued='' i options
    local -a words=() program=("${1/#\~/$HOME}")
    # The shell takes NAME=VALUE apart; here it is one word.
    for ((i = 1; i <= COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ ${#words[@]} -gt 0 && ($word == = || -n $glued) ]]; then
            words[${#words[@]} - 1]+=$word
        else
            words+=("$word")
        fi
        [[ $word == = ]] && glued=1 || glued=
    done
    cur=${words[${#words[@]} - 1]}
    COMPREPLY=()
    compopt -o nospace 2>/dev/null

    # The verb is the first word that is neither an option nor its value.
    for ((i = 0; i < ${#words[@]} - 1; i++)); do
        word=${words[i]}
        if [[ $word == --plugins ]]; then
            program+=(--plugins "${words[++i]}")
        elif [[ $word == --plugins=* ]]; then
            program+=("$word")
        elif [[ -z $verb && $word != -* ]]; then
            verb=$word
        fi
        prev=${words[i]}
    done
    [[ ${#words[@]} -gt 1 ]] && prev=${words[${#words[@]} - 2]}
    if [[ $cur == --*=* ]]; then
        prev=${cur%%=*}
        cur=${cur#*=}
    fi

    case $verb:$prev in
    *:--plugins | export:-o | export:--output)
        _kivhost_files
        return ;;
    *:--format)
        _kivhost_words < <("${program[@]}" formats 2>/dev/null | cut -f 3)
        _kivhost_words < <("${program[@]}" formats 2>/dev/null | cut -f 1)
        return ;;
    *:--set)
        _kivhost_assignment
        return ;;
    *:--settings)
        _kivhost_files ini
        return ;;
    svg:--for)
        _kivhost_words <<<$'ansi\neastman\nlabels'
        return ;;
    export:--not-optimised)
        _kivhost_words <<<$'continue\nstop'
        return ;;
    import:--layout)
        _kivhost_files svg
        return ;;
    import:-o | import:--output)
        _kivhost_files mar
        return ;;
    render:-o | render:--output)
        _kivhost_files png svg
        return ;;
    *:--fabric | *:--block | *:--unit | *:--size | *:--fields | *:--*-separator)
        return ;;
    esac

    if [[ $cur == -* ]]; then
        options='-h --help --plugins'
        case $verb in
        '') options+=' --version' ;;
        formats | settings) options+=' --json' ;;
        info) options+=' --cut --set --settings --json' ;;
        svg) options+=' --fabric --for --block --set --settings' ;;
        render) options+=' -o --output --size --fabric --set --settings' ;;
        import) options+=' --layout --unit -o --output' ;;
        export)
            options+=' --format --all -o --output --set --settings --fields --field-separator'
            options+=' --repeat-separator --one-line-per-size --not-optimised --json' ;;
        esac
        _kivhost_words <<<"${options// /$'\n'}"
        return
    fi
    case $verb in
    '')
        _kivhost_words <<<$'formats\ninfo\nsvg\nrender\nimport\nexport\nsettings'
        # Without a verb the window opens the files.
        [[ ${#COMPREPLY[@]} -gt 0 && -n $cur ]] || {
            local -a verbs=("${COMPREPLY[@]}")
            COMPREPLY=()
            [[ -n $cur ]] && _kivhost_files mar cut dxf ai txt
            COMPREPLY+=("${verbs[@]}")
        } ;;
    info | svg | export) _kivhost_files mar ;;
    import) _kivhost_files json ;;
    formats | settings) ;;
    *) _kivhost_files mar cut dxf ai txt ;; # a picture of a file, or more files for the window
    esac
}

complete -F _kivhost kivhost
